#pragma once

#include "ui/Theme.h"

#include <QComboBox>

namespace quillmender {

/// A choice of one of a few texts. The wheel scrolls past it and never changes the choice.
class PopUpButton : public QComboBox {
    Q_OBJECT

  public:
    explicit PopUpButton(Theme &theme, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

  private:
    Theme &theme_;
};

} // namespace quillmender
