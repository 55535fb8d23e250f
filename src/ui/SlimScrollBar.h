#pragma once

#include "ui/Theme.h"

#include <QScrollBar>

namespace quillmender {

/// A narrow vertical scroll bar that is invisible while there is nothing to scroll.
class SlimScrollBar : public QScrollBar {
    Q_OBJECT

  public:
    static constexpr int breadth = 10;

    explicit SlimScrollBar(Theme &theme, QWidget *parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

  private:
    QRectF thumb() const;

    Theme &theme_;
    int grabOffset_ = 0;
};

} // namespace quillmender
