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
    // A label that can be read tells its own text; anything else is named after its label.
    if (!qobject_cast<QLabel *>(field))
        field->setAccessibleName(label);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    row->addWidget(label_, 0, Qt::AlignVCenter);
    row->addWidget(field);
    if (field->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed)
        row->addStretch(1);
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
