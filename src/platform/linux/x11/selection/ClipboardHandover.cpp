#include "platform/linux/x11/selection/ClipboardHandover.h"

#include "platform/SignalWait.h"
#include "platform/linux/LaterPointer.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/selection/SelectionConversion.h"

namespace quillmender::x11 {

using namespace std::chrono_literals;

QCoro::Task<> handOverClipboard(X11Connection &connection, SelectionContents contents) {
    QList<quint32> targets;
    for (const SelectionTarget &each : contents)
        targets.append(each.target);
    const LaterPointer<SelectionConversion> conversion(new SelectionConversion(
        connection, connection.atom("CLIPBOARD_MANAGER"), connection.atom("SAVE_TARGETS"),
        connection.serverTime(), mostOfProperty, targets));
    conversion->setParent(&connection);
    xcb_flush(connection.xcb());
    // Without a manager the server itself answers that nobody owns its selection.
    co_await SignalWait(conversion.get(), &SelectionConversion::advanced, 2s);
}

} // namespace quillmender::x11
