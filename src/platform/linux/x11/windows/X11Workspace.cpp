#include "platform/linux/x11/windows/X11Workspace.h"

#include "platform/linux/desktop/SettingsPages.h"
#include "platform/linux/desktop/UrlOpener.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/windows/ActiveWindow.h"
#include "platform/linux/x11/windows/WindowOwnership.h"

namespace quillmender::x11 {

RunningApplicationRef X11Workspace::frontmostApplication() {
    return activeWindow_.frontmost();
}

bool X11Workspace::activate(RunningApplicationRef application) {
    const auto own = std::dynamic_pointer_cast<const X11RunningApplication>(application);
    if (!own)
        return false;
    const auto exists = replyTo(connection_.xcb(), xcb_get_window_attributes_reply,
                                xcb_get_window_attributes(connection_.xcb(), own->window()));
    if (!exists || !isStillItself(connection_, *own))
        return false;
    activeWindow_.activate(own->window());
    return true;
}

std::optional<DesktopRect> X11Workspace::windowFrame(RunningApplicationRef application) {
    const auto own = std::dynamic_pointer_cast<const X11RunningApplication>(application);
    if (!own)
        return std::nullopt;
    const auto sizeCookie = xcb_get_geometry(connection_.xcb(), own->window());
    const auto placeCookie =
        xcb_translate_coordinates(connection_.xcb(), own->window(), connection_.root(), 0, 0);
    const auto size = replyTo(connection_.xcb(), xcb_get_geometry_reply, sizeCookie);
    const auto place = replyTo(connection_.xcb(), xcb_translate_coordinates_reply, placeCookie);
    if (!size || !place)
        return std::nullopt;
    return DesktopRect{place->dst_x, place->dst_y, size->width, size->height};
}

bool X11Workspace::openUrl(const QUrl &url) {
    return openUrlOnDesktop(url);
}

bool X11Workspace::openSettingsPage(SettingsPage page) {
    return settingsPages::open(page);
}

} // namespace quillmender::x11
