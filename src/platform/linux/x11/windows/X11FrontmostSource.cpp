#include "platform/linux/x11/windows/X11FrontmostSource.h"

#include "platform/linux/terminal/CommandEditors.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/selection/SelectionReader.h"
#include "platform/linux/x11/windows/ActiveWindow.h"
#include "platform/linux/x11/windows/WindowOwnership.h"

namespace quillmender::x11 {

RunningApplicationRef X11FrontmostSource::application() const {
    return activeWindow_.frontmost();
}

bool X11FrontmostSource::isTerminal() const {
    const auto application = activeWindow_.frontmost();
    return application && isTerminalWindow(application->window());
}

bool X11FrontmostSource::isTerminalWindow(xcb_window_t window) const {
    const QStringList names = classOf(window);
    return terminals_.isTerminal(names.value(0), names.value(1));
}

bool X11FrontmostSource::isCommandEditorWindow(xcb_window_t window) const {
    return isCommandEditor(classOf(window).value(1));
}

QStringList X11FrontmostSource::classOf(xcb_window_t window) const {
    const auto wmClass = readProperty(connection_, window, XCB_ATOM_WM_CLASS);
    return wmClass ? QString::fromLatin1(wmClass->value).split(QChar::Null) : QStringList();
}

QCoro::Task<std::optional<QString>> X11FrontmostSource::primarySelection() {
    const auto application = activeWindow_.frontmost();
    if (!application)
        co_return std::nullopt;
    const auto owner = replyTo(connection_.xcb(), xcb_get_selection_owner_reply,
                               xcb_get_selection_owner(connection_.xcb(), XCB_ATOM_PRIMARY));
    if (!owner || owner->owner == XCB_WINDOW_NONE ||
        !isSameApplication(connection_, owner->owner, application->window()))
        co_return std::nullopt;
    SelectionReader reader(connection_, XCB_ATOM_PRIMARY);
    co_return co_await reader.readText(std::chrono::seconds(1));
}

} // namespace quillmender::x11
