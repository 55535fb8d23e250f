#include "ui/WindowPlacement.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace quillmender {

QScreen *screenInUse() {
    QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    return screen ? screen : QGuiApplication::primaryScreen();
}

void centreOnScreen(QWidget &window, QScreen &screen, QSize contentSize, QSize reservedFrame) {
    const QRect available = screen.availableGeometry();
    // Known once the window manager has framed the window.
    const QSize frame = window.frameGeometry().size() - window.size();
    const QSize size = contentSize.boundedTo(available.size() - frame.expandedTo(reservedFrame));
    window.setScreen(&screen);
    window.setFixedSize(size);
    // The content is centred, not the frame, whose size is unknown at the first show: the window
    // must not stand elsewhere at the next one.
    const int titleBar =
        std::max(window.geometry().y() - window.frameGeometry().y(), reservedFrame.height());
    const int above = std::max((available.height() - size.height()) / 2, titleBar);
    const int left = (available.width() - size.width()) / 2;
    window.setGeometry(QRect(available.topLeft() + QPoint(left, above), size));
}

} // namespace quillmender
