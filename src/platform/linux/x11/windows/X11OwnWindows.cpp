#include "platform/linux/x11/windows/X11OwnWindows.h"

#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/windows/WindowStanding.h"

#include <QGuiApplication>
#include <QWindow>

namespace quillmender::x11 {

namespace {

// The server is spoken to on a connection of our own, which would otherwise get ahead of what the
// toolkit has asked for about the same window: its creation, its mapping.
void finishToolkitRequests() {
    const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return;
    xcb_connection_t *const xcb = x11->connection();
    replyTo(xcb, xcb_get_input_focus_reply, xcb_get_input_focus(xcb));
}

xcb_window_t nativeWindow(const QWindow &window) {
    return static_cast<xcb_window_t>(window.winId());
}

} // namespace

X11OwnWindows::X11OwnWindows(WindowStanding &standing, std::function<QIcon()> icon)
    : standing_(standing),
      icon_(std::move(icon)) {}

void X11OwnWindows::ensureIcon() const {
    if (QGuiApplication::windowIcon().isNull())
        QGuiApplication::setWindowIcon(icon_());
}

void X11OwnWindows::applyPanelAttributes(QWindow *window) {
    ensureIcon();
    // This waits for the toolkit's requests, too.
    keysAtFocus_.watch(nativeWindow(*window));
    standing_.applyPanelAttributes(nativeWindow(*window));
    standing_.askForFrame(nativeWindow(*window));
}

void X11OwnWindows::applyWindowAttributes(QWindow *window) {
    finishToolkitRequests();
    standing_.askForFrame(nativeWindow(*window));
}

bool X11OwnWindows::areBlended() {
    return standing_.hasCompositor();
}

void X11OwnWindows::activate(QWindow *window) {
    ensureIcon();
    finishToolkitRequests();
    standing_.activate(nativeWindow(*window));
}

QSet<quint32> X11OwnWindows::keysDownAtFocus(QWindow *window) {
    return keysAtFocus_.of(nativeWindow(*window));
}

bool X11OwnWindows::isKeyDown(quint32 code) {
    return KeysAtFocus::isDown(code);
}

} // namespace quillmender::x11
