#include "platform/linux/wayland/windows/WaylandWorkspace.h"

#include "platform/linux/desktop/SettingsPages.h"
#include "platform/linux/desktop/UrlOpener.h"
#include "platform/linux/wayland/windows/SourceApplications.h"

namespace quillmender::wayland {

RunningApplicationRef WaylandWorkspace::frontmostApplication() {
    return applications_.frontmost();
}

bool WaylandWorkspace::activate(RunningApplicationRef application) {
    const auto own = std::dynamic_pointer_cast<const WaylandRunningApplication>(application);
    return own && applications_.toplevels().activate(own->windowId());
}

std::optional<DesktopRect> WaylandWorkspace::windowFrame(RunningApplicationRef application) {
    const auto own = std::dynamic_pointer_cast<const WaylandRunningApplication>(application);
    return own ? own->toplevel().frame : std::nullopt;
}

bool WaylandWorkspace::openUrl(const QUrl &url) {
    return openUrlOnDesktop(url);
}

bool WaylandWorkspace::openSettingsPage(SettingsPage page) {
    return settingsPages::open(page);
}

} // namespace quillmender::wayland
