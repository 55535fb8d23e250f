#pragma once

#include <QMetaObject>
#include <QObject>
#include <QSize>

class QScreen;
class QWidget;

namespace quillmender {

/// Keeps a shown window whole when its screen becomes smaller, or another takes its place: it is
/// placed anew, in the middle, when it no longer fits where it is. One that was made smaller so
/// gets its size back with the room for it. Where there is room the window stays where the user has
/// put it.
class ScreenFollower : public QObject {
    Q_OBJECT

  public:
    /// The window, placed by `centreOnScreen` with this size, outlives it.
    ScreenFollower(QWidget &window, QSize contentSize);

  protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    void follow(QScreen *screen);
    void fit();

    QWidget &window_;
    QSize contentSize_;
    QMetaObject::Connection following_;
};

} // namespace quillmender
