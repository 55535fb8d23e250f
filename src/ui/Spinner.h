#pragma once

#include "ui/Theme.h"

#include <QBasicTimer>
#include <QWidget>

namespace quillmender {

/// A small sign that something is under way. It wakes the program only while it can be seen.
class Spinner : public QWidget {
    Q_OBJECT

  public:
    explicit Spinner(Theme &theme, QWidget *parent = nullptr);

    bool isAnimating() const { return timer_.isActive(); }
    QSize sizeHint() const override;

  protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

  private:
    Theme &theme_;
    QBasicTimer timer_;
    int step_ = 0;
};

} // namespace quillmender
