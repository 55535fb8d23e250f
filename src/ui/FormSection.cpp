#include "ui/FormSection.h"

#include "ui/Card.h"
#include "ui/FormRow.h"
#include "ui/TextLabel.h"
#include "ui/style/Metrics.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillmender {

namespace {
constexpr int titleGap = 8;
constexpr int rowGap = 12;
constexpr int captionGap = 4; ///< to the control that it is about
// The lines of a text have air of their own.
constexpr int textPadding = 12;
constexpr int buttonGap = 8;
// What surrounds a control that ends with the others may go so far beyond.
constexpr int overhangRoom = 3;
} // namespace

FormSection::FormSection(Theme &theme, const QString &title, QWidget *parent)
    : QWidget(parent),
      theme_(theme) {
    auto *stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(titleGap);
    if (!title.isEmpty()) {
        setAccessibleName(title);
        auto *heading = new TextLabel(theme, TextStyle::headline, TextLabel::Tone::primary, this);
        heading->show(title);
        stack->addWidget(heading);
    }
    auto *card = new Card(theme, this);
    card_ = card;
    rows_ = card->stack();
    rows_->setContentsMargins(metrics::cardPadding, 0, metrics::cardPadding - overhangRoom, 0);
    stack->addWidget(card);
}

void FormSection::addField(const QString &label, QWidget *field) {
    addRow(new FormRow(theme_, label, field, card_));
}

TextLabel *FormSection::addCaption(const QString &text) {
    auto *caption = new TextLabel(theme_, TextStyle::caption, TextLabel::Tone::secondary, card_);
    caption->setCode(TextLabel::Code::marked);
    caption->show(text);
    addRow(caption);
    return caption;
}

void FormSection::addRow(QWidget *row, int overhang) {
    // Assistive technology reads the children in their order.
    row->raise();
    auto *line = new QHBoxLayout;
    line->addWidget(row);
    const auto *label = qobject_cast<TextLabel *>(row);
    const auto *form = qobject_cast<FormRow *>(row);
    const bool isText = label || (form && form->isText());
    int gap = rows_->count() == 0 ? 0 : label ? captionGap : rowGap;
    // A row that is hidden takes its gap along; a control fills all that is its own.
    if (!qobject_cast<QAbstractButton *>(row)) {
        row->setContentsMargins(0, gap, 0, 0);
        gap = 0;
    }
    append(line, isText, QMargins(0, gap, overhangRoom - overhang, 0));
}

void FormSection::append(QBoxLayout *line, bool isText, const QMargins &around) {
    const int padding = isText ? textPadding : metrics::cardPadding;
    line->setContentsMargins(around);
    QMargins margins = rows_->contentsMargins();
    if (rows_->count() == 0)
        margins.setTop(padding);
    margins.setBottom(padding);
    rows_->setContentsMargins(margins);
    rows_->addLayout(line);
}

void FormSection::addButtons(const QList<QWidget *> &buttons) {
    auto *row = new QHBoxLayout;
    row->setSpacing(buttonGap);
    for (QWidget *button : buttons) {
        button->raise();
        row->addWidget(button);
    }
    row->addStretch(1);
    append(row, false, QMargins(0, rowGap, overhangRoom, 0));
}

} // namespace quillmender
