#include "platform/linux/x11/CopiedLine.h"

#include "platform/linux/x11/ClientIdentity.h"
#include "platform/linux/x11/SelectionReader.h"
#include "platform/linux/x11/X11Connection.h"

#include <algorithm>
#include <array>

namespace quillmender {

namespace {

/// Parts of names that only spreadsheets and office suites give to what they copy.
constexpr std::array tableFormats{"csv", "gnumeric", "openoffice", "spreadsheet", "sylk", "biff"};

xcb_window_t ownerOf(const X11Connection &connection, xcb_atom_t selection) {
    const auto reply = adoptXcb(xcb_get_selection_owner_reply(
        connection.xcb(), xcb_get_selection_owner(connection.xcb(), selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

bool isOneEndedLine(QStringView text) {
    return text.endsWith(u'\n') && text.indexOf(u'\n') == text.size() - 1;
}

bool isOfTable(const QByteArray &target) {
    const QByteArray name = target.toLower();
    return std::ranges::any_of(tableFormats,
                               [&](const char *format) { return name.contains(format); });
}

} // namespace

QCoro::Task<bool> isCopiedLine(X11Connection &connection, QString text) {
    if (!isOneEndedLine(text))
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
    co_return std::ranges::none_of(targets, isOfTable);
}

} // namespace quillmender
