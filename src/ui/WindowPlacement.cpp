#include "ui/WindowPlacement.h"

#include "platform/OwnWindows.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace quillmender {

namespace {

// As wide as window managers draw them. Some tell nothing of a frame before they have drawn it.
constexpr QMargins usualFrame(8, 40, 8, 8);

QMargins frameAround(const QWidget &window) {
    const QWindow *native = window.windowHandle();
    const QMargins told = native && native->handle() ? native->frameMargins() : QMargins();
    if (told.isNull())
        return usualFrame;
    // Each side was rounded to whole points, which may have hidden a pixel of it.
    const double ratio = native->devicePixelRatio();
    return ratio == std::floor(ratio) ? told : told + QMargins(0, 0, 1, 1);
}

} // namespace

QScreen *screenInUse(OwnWindows &ownWindows) {
    QScreen *screen = ownWindows.screenInUse();
    if (!screen)
        screen = QGuiApplication::screenAt(QCursor::pos());
    return screen ? screen : QGuiApplication::primaryScreen();
}

QSize roomOnScreen(const QWidget &window, const QScreen &screen) {
    const QMargins frame = frameAround(window);
    return screen.availableSize() -
           QSize(frame.left() + frame.right(), frame.top() + frame.bottom());
}

void centreOnScreen(QWidget &window, QScreen &screen, QSize contentSize) {
    const QRect available = screen.availableGeometry();
    const QMargins frame = frameAround(window);
    const QSize size = contentSize.boundedTo(roomOnScreen(window, screen));
    window.setScreen(&screen);
    window.setFixedSize(size);
    // The content is centred, not the frame, which may be unknown at the first show: the window
    // must not stand elsewhere at the next one.
    const int lowest = available.height() - size.height() - frame.bottom();
    const int above =
        std::max(frame.top(), std::min((available.height() - size.height()) / 2, lowest));
    const int left = (available.width() - size.width()) / 2;
    window.setGeometry(QRect(available.topLeft() + QPoint(left, above), size));
}

} // namespace quillmender
