#include "platform/linux/wayland/windows/AccessibleToplevels.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace quillmender::wayland {

namespace {

bool hasOurs() {
    return QGuiApplication::focusWindow() != nullptr;
}

bool isOursOnScreen() {
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), &QWindow::isVisible);
}

} // namespace

AccessibleToplevels::AccessibleToplevels(const FrontWindows &windows) : windows_(windows) {
    handover_.setSingleShot(true);
    connect(&handover_, &QTimer::timeout, this, &Toplevels::changed);
    connect(&windows_, &FrontWindows::changed, this, &AccessibleToplevels::handleFront);
    if (qGuiApp)
        connect(qGuiApp, &QGuiApplication::focusWindowChanged, this,
                &AccessibleToplevels::handleFocus);
}

void AccessibleToplevels::handleFront() {
    if (windows_.isActive())
        handover_.stop();
    else if (isOursOnScreen())
        handover_.start(handover);
    Q_EMIT changed();
}

void AccessibleToplevels::handleFocus() {
    if (hasOurs())
        handover_.stop();
    else if (!windows_.isActive())
        handover_.start(handover);
    Q_EMIT changed();
}

std::optional<Toplevel> AccessibleToplevels::active() const {
    const std::optional<FrontWindow> latest = windows_.latest();
    if (!latest || !(windows_.isActive() || hasOurs() || handover_.isActive()))
        return std::nullopt;
    Toplevel window;
    window.id = latest->id;
    window.processId = latest->processId;
    window.appId = latest->application;
    window.title = latest->title;
    return window;
}

bool AccessibleToplevels::hasKeyboard(const QByteArray &id) const {
    const std::optional<FrontWindow> latest = windows_.latest();
    return latest && latest->id == id && windows_.isActive() && !hasOurs();
}

bool AccessibleToplevels::activate(const QByteArray &) {
    return false;
}

} // namespace quillmender::wayland
