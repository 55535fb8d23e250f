#include "platform/linux/x11/windows/TkWindows.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/windows/WindowOwnership.h"

#include <algorithm>

namespace quillmender::x11 {

bool isTkWindow(X11Connection &connection, xcb_window_t window) {
    const auto registry =
        readProperty(connection, connection.root(), connection.atom("InterpRegistry"));
    if (!registry)
        return false;
    // "<window in hexadecimal digits> <name of the program>", one after another.
    const QList<QByteArray> programs = registry->value.split('\0');
    return std::any_of(programs.begin(), programs.end(), [&](const QByteArray &program) {
        const xcb_window_t listed = program.left(program.indexOf(' ')).toUInt(nullptr, 16);
        return listed != XCB_WINDOW_NONE && isSameApplication(connection, listed, window);
    });
}

} // namespace quillmender::x11
