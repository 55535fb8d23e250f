#include "ui/ScreenFollower.h"

#include "ui/WindowPlacement.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace quillmender {

ScreenFollower::ScreenFollower(QWidget &window, QSize contentSize)
    : window_(window),
      contentSize_(contentSize) {
    window.installEventFilter(this);
    // The toolkit brings the window to another one first.
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ScreenFollower::fit,
            Qt::QueuedConnection);
}

bool ScreenFollower::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::WinIdChange && window_.windowHandle())
        connect(window_.windowHandle(), &QWindow::screenChanged, this, &ScreenFollower::follow,
                Qt::UniqueConnection);
    if (event->type() == QEvent::Show && !event->spontaneous())
        follow(window_.screen());
    return QObject::eventFilter(watched, event);
}

void ScreenFollower::follow(QScreen *screen) {
    disconnect(following_);
    if (!screen)
        return;
    // Not while the change is being told: the window system's own word on the window may follow.
    following_ = connect(screen, &QScreen::availableGeometryChanged, this, &ScreenFollower::fit,
                         Qt::QueuedConnection);
}

void ScreenFollower::fit() {
    QScreen *screen = window_.screen();
    if (!window_.isVisible() || !screen)
        return;
    const bool isWhole = screen->availableGeometry().contains(window_.frameGeometry());
    const QSize possible = contentSize_.boundedTo(roomOnScreen(window_, *screen));
    if (!isWhole || window_.size() != possible)
        centreOnScreen(window_, *screen, contentSize_);
}

} // namespace quillmender
