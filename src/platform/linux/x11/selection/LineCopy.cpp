#include "platform/linux/x11/selection/LineCopy.h"

#include "platform/linux/CopiedLine.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/selection/SelectionReader.h"
#include "platform/linux/x11/windows/WindowOwnership.h"

#include <algorithm>

namespace quillmender::x11 {

namespace {

xcb_window_t ownerOf(const X11Connection &connection, xcb_atom_t selection) {
    const auto reply = replyTo(connection.xcb(), xcb_get_selection_owner_reply,
                               xcb_get_selection_owner(connection.xcb(), selection));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

} // namespace

QCoro::Task<bool> wasLineCopied(X11Connection &connection, QString text) {
    if (!canBeCopiedLine(text))
        co_return false;
    const xcb_atom_t clipboard = connection.atom("CLIPBOARD");
    const xcb_window_t primaryOwner = ownerOf(connection, XCB_ATOM_PRIMARY);
    if (primaryOwner != XCB_WINDOW_NONE &&
        isSameApplication(connection, primaryOwner, ownerOf(connection, clipboard))) {
        SelectionReader primary(connection, XCB_ATOM_PRIMARY);
        const std::optional<QString> selected = co_await primary.readText();
        // A selection of old may have the same words, but the line end is the editor's own.
        if (selected == text)
            co_return false;
    }
    SelectionReader reader(connection, clipboard);
    const QList<QByteArray> targets = co_await reader.offered();
    co_return std::ranges::none_of(targets, isFormatOfTable);
}

} // namespace quillmender::x11
