#pragma once

#include "ui/Theme.h"

#include <QComboBox>

namespace quillmender {

/// A choice of one of a few texts. The wheel scrolls past it and never changes the choice.
class PopUpButton : public QComboBox {
    Q_OBJECT

  public:
    explicit PopUpButton(Theme &theme, QWidget *parent = nullptr);

    QSize minimumSizeHint() const override;

  protected:
    void wheelEvent(QWheelEvent *event) override;
};

} // namespace quillmender
