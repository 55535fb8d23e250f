#pragma once

#include "ui/Theme.h"

#include <QWidget>

namespace quillmender {

class TextLabel;

/// A field beside its label. The labels of a form share one width.
class FormRow : public QWidget {
    Q_OBJECT

  public:
    FormRow(Theme &theme, const QString &label, QWidget *field, QWidget *parent = nullptr);

    /// Whether it is read alone.
    bool isText() const;
    int naturalLabelWidth() const;
    void setLabelWidth(int width);

  private:
    TextLabel *label_;
    bool isText_ = false;
};

/// Gives all the rows beneath the form the width of the widest label.
void alignLabels(const QWidget &form);

} // namespace quillmender
