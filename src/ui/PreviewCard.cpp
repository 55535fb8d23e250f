#include "ui/PreviewCard.h"

#include "ui/ActionPickerModel.h"
#include "ui/PushButton.h"
#include "ui/Spinner.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>

namespace quillmender {

PreviewCard::PreviewCard(Theme &theme, QWidget *parent)
    : Card(theme, parent),
      title_(new TextLabel(theme, TextStyle::headline, TextLabel::Tone::primary, this)),
      progressRow_(new QWidget(this)),
      spinner_(new Spinner(theme, progressRow_)),
      progress_(new TextLabel(theme, TextStyle::caption, TextLabel::Tone::primary, progressRow_)),
      preview_(new TextLabel(theme, TextStyle::body, TextLabel::Tone::primary, this)),
      description_(new TextLabel(theme, TextStyle::caption, TextLabel::Tone::secondary, this)),
      error_(new TextLabel(theme, TextStyle::body, TextLabel::Tone::error, this)),
      accessRow_(new QWidget(this)),
      accessButton_(new PushButton(theme, QStringLiteral("Request Accessibility Access"),
                                   PushButton::Prominence::standard, accessRow_)) {
    auto *access = new QHBoxLayout(accessRow_);
    access->setContentsMargins(0, 12, 0, 0);
    access->addWidget(accessButton_);
    access->addStretch(1);

    auto *row = new QHBoxLayout(progressRow_);
    row->setContentsMargins(0, 8, 0, 0);
    row->setSpacing(8);
    row->addWidget(spinner_);
    row->addWidget(progress_, 1);

    stack()->addWidget(title_);
    stack()->addWidget(progressRow_);
    stack()->addSpacing(8);
    stack()->addWidget(preview_);
    stack()->addWidget(description_);
    stack()->addWidget(error_);
    stack()->addWidget(accessRow_);
    description_->setContentsMargins(0, 8, 0, 0);
    error_->setContentsMargins(0, 12, 0, 0);
    accessRow_->hide();
    progressRow_->hide();
    description_->hide();
    error_->hide();
}

void PreviewCard::render(const ActionPickerModel &model) {
    title_->show(model.captureTitle());
    setAccessibleName(model.captureTitle());

    const QString running = model.currentActionTitle();
    progress_->show(running.isEmpty() ? QStringLiteral("Processing\u2026") : running);
    progressRow_->setVisible(model.isWorking());

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
