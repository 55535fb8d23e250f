#include "ui/FormSection.h"

#include "ui/Card.h"
#include "ui/FormRow.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillmender {

namespace {
constexpr int titleGap = 8;
constexpr int rowGap = 12;
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
    rows_->setSpacing(rowGap);
    QMargins margins = rows_->contentsMargins();
    margins.setRight(margins.right() - overhangRoom);
    rows_->setContentsMargins(margins);
    stack->addWidget(card);
}

void FormSection::addField(const QString &label, QWidget *field) {
    addRow(new FormRow(theme_, label, field, card_));
}

TextLabel *FormSection::addCaption(const QString &text) {
    auto *caption = new TextLabel(theme_, TextStyle::caption, TextLabel::Tone::secondary, card_);
    caption->markCode();
    caption->show(text);
    addRow(caption);
    return caption;
}

void FormSection::addRow(QWidget *row, int overhang) {
    // Assistive technology reads the children in their order.
    row->raise();
    auto *line = new QHBoxLayout;
    line->setContentsMargins(0, 0, overhangRoom - overhang, 0);
    line->addWidget(row);
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
    rows_->addLayout(row);
}

} // namespace quillmender
