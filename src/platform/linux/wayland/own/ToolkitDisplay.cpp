#include "platform/linux/wayland/own/ToolkitDisplay.h"

#include <QGuiApplication>

namespace quillmender::wayland {

wl_display *toolkitDisplay() {
    const auto *const toolkit =
        qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QWaylandApplication>() : nullptr;
    return toolkit ? toolkit->display() : nullptr;
}

} // namespace quillmender::wayland
