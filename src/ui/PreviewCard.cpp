#include "ui/PreviewCard.h"

#include "ui/ActionPickerModel.h"
#include "ui/ErrorLabel.h"
#include "ui/PushButton.h"
#include "ui/Spinner.h"
#include "ui/TextLabel.h"
#include "ui/style/Metrics.h"

#include <QHBoxLayout>

#include <algorithm>

namespace quillmender {

namespace {

QLayout *lowered(QWidget *widget, int by) {
    auto *column = new QVBoxLayout;
    column->setContentsMargins(0, std::max(by, 0), 0, 0);
    column->addWidget(widget);
    column->addStretch(1);
    return column;
}

} // namespace

PreviewCard::PreviewCard(Theme &theme, QWidget *parent)
    : Card(theme, parent),
      title_(new TextLabel(theme, TextStyle::headline, TextLabel::Tone::primary, this)),
      progressBox_(new QWidget(this)),
      spinner_(new Spinner(theme, progressBox_)),
      progress_(new TextLabel(theme, TextStyle::caption, TextLabel::Tone::primary, progressBox_)),
      preview_(new TextLabel(theme, TextStyle::body, TextLabel::Tone::primary, this)),
      description_(new TextLabel(theme, TextStyle::caption, TextLabel::Tone::secondary, this)),
      error_(new ErrorLabel(theme, this)),
      accessRow_(new QWidget(this)),
      accessButton_(new PushButton(theme, QStringLiteral("Request Accessibility Access"),
                                   PushButton::Prominence::standard, accessRow_)) {
    auto *access = new QHBoxLayout(accessRow_);
    // A card that ends in a button has more room beneath than one that ends in a text.
    access->setContentsMargins(0, 8, 0, metrics::cardPadding - metrics::cardTextPadding);
    access->addWidget(accessButton_);
    access->addStretch(1);

    stack()->addLayout(firstLine());
    stack()->addSpacing(2);
    stack()->addWidget(preview_);
    stack()->addWidget(description_);
    stack()->addWidget(error_);
    stack()->addWidget(accessRow_);
    error_->setContentsMargins(0, 6, 0, 0);
    accessRow_->hide();
    progressBox_->hide();
    description_->hide();
    error_->hide();
}

QLayout *PreviewCard::firstLine() {
    auto *progress = new QHBoxLayout(progressBox_);
    progress->setContentsMargins(0, 0, 0, 0);
    progress->setSpacing(8);
    progress->addStretch(1);
    // Both texts stand on one line, and the spinner in the middle of its capitals.
    const QFontMetrics caption = progress_->fontMetrics();
    const int top = title_->fontMetrics().ascent() - caption.ascent();
    const int middle = top + caption.ascent() - (caption.capHeight() + 1) / 2;
    progress->addLayout(lowered(spinner_, middle - spinner_->height() / 2));
    progress->addLayout(lowered(progress_, top));
    progress_->setMaximumLines(1);
    progress_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    // Its place is kept, so that nothing moves when it comes and goes.
    QSizePolicy kept(QSizePolicy::Ignored, QSizePolicy::Ignored);
    kept.setRetainSizeWhenHidden(true);
    progressBox_->setSizePolicy(kept);

    auto *line = new QHBoxLayout;
    line->setSpacing(12);
    line->addWidget(title_, 1);
    line->addWidget(progressBox_, 1);
    return line;
}

void PreviewCard::render(const ActionPickerModel &model) {
    title_->show(model.captureTitle());
    setAccessibleName(model.captureTitle());

    const QString running = model.currentActionTitle();
    progress_->show(running.isEmpty() ? QStringLiteral("Processing\u2026") : running);
    progressBox_->setVisible(model.isWorking());

    const QString captured = model.selectedTextPreview();
    preview_->show(captured.isEmpty() ? QStringLiteral("No text captured yet.") : captured);

    description_->show(model.captureDescription());
    description_->setVisible(!model.captureDescription().isEmpty());

    const std::optional<QString> error = model.errorMessage();
    error_->show(error.value_or(QString()));
    error_->setVisible(error.has_value());
    accessRow_->setVisible(error.has_value() && !model.accessibilityGranted());
}

} // namespace quillmender
