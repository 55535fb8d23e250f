#include "platform/macos/WindowWatch.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QVariant>
#include <QWindow>

#import <AppKit/AppKit.h>
#include <algorithm>

namespace quillmender {

namespace {

constexpr char closeKeyProperty[] = "_quillmender_closeKey";

// A window in the Dock is not on the screen; menus and tool tips go with the window that they are
// over.
bool isOnScreen(const QWindow *window) {
    const bool isPassing = (window->type() & Qt::Popup) == Qt::Popup;
    return window->isVisible() && !isPassing &&
           !window->windowStates().testFlag(Qt::WindowMinimized);
}

} // namespace

void WindowWatch::add(QWindow &window) {
    window.installEventFilter(this);
}

void WindowWatch::addCloseKey(QWindow &window) {
    window.setProperty(closeKeyProperty, true);
}

bool WindowWatch::eventFilter(QObject *watched, QEvent *event) {
    // Later, when who hides the window has done all that belongs to it: another window may be next.
    if (event->type() == QEvent::Hide) {
        QMetaObject::invokeMethod(this, &WindowWatch::giveKeyboardBack, Qt::QueuedConnection);
    } else if (event->type() == QEvent::KeyPress && watched->property(closeKeyProperty).toBool() &&
               static_cast<QKeyEvent *>(event)->matches(QKeySequence::Close)) {
        static_cast<QWindow *>(watched)->close();
        return true;
    }
    return false;
}

void WindowWatch::giveKeyboardBack() {
    if (std::ranges::any_of(QGuiApplication::topLevelWindows(), isOnScreen))
        return;
    @autoreleasepool {
        NSApplication *const application = [NSApplication sharedApplication];
        // Who is not active has nothing to give back.
        if ([application isActive])
            [application hide:nil];
    }
}

} // namespace quillmender
