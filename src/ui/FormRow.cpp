#include "ui/FormRow.h"

#include "ui/TextLabel.h"

#include <QHBoxLayout>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int gap = 16;
} // namespace

FormRow::FormRow(Theme &theme, const QString &label, QWidget *field, QWidget *parent)
    : QWidget(parent),
      label_(new TextLabel(theme, TextStyle::body, TextLabel::Tone::primary, this)) {
    label_->show(label);
    label_->setBuddy(field);
    isText_ = qobject_cast<QLabel *>(field) != nullptr;
    // A label that can be read tells its own text; anything else is named after its label.
    if (!isText_)
        field->setAccessibleName(label);
    // A control rounds up where it puts its text in the middle.
    constexpr int endless = 10000;
    const int height = field->sizeHint().height();
    const int wanted = (height - label_->fontMetrics().height() + 1) / 2;
    const int lower = 2 * wanted - height + label_->heightForWidth(endless);
    if (!isText_)
        label_->setContentsMargins(0, std::max(lower, 0), 0, 0);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    row->addWidget(label_, 0, Qt::AlignVCenter);
    row->addWidget(field);
    if (field->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed)
        row->addStretch(1);
}

bool FormRow::isText() const {
    return isText_;
}

int FormRow::naturalLabelWidth() const {
    return label_->sizeHint().width();
}

void FormRow::setLabelWidth(int width) {
    label_->setFixedWidth(width);
}

void alignLabels(const QWidget &form) {
    const auto rows = form.findChildren<FormRow *>();
    int widest = 0;
    for (const FormRow *row : rows)
        widest = std::max(widest, row->naturalLabelWidth());
    for (FormRow *row : rows)
        row->setLabelWidth(widest);
}

} // namespace quillmender
