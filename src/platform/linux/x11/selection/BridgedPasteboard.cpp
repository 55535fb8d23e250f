#include "platform/linux/x11/selection/BridgedPasteboard.h"

#include "platform/linux/x11/selection/SelectionReader.h"

#include <QPointer>

namespace quillmender::x11 {

using namespace std::chrono_literals;

namespace {

constexpr auto openingLimit = 10s;
constexpr auto primaryLimit = 500ms;

QCoro::Task<std::optional<QString>> readPrimary(QPointer<X11Connection> connection) {
    if (!connection || connection->isLost())
        co_return std::nullopt;
    SelectionReader reader(*connection, XCB_ATOM_PRIMARY);
    co_return co_await reader.readText(primaryLimit);
}

} // namespace

BridgedPasteboard::BridgedPasteboard(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)),
      ping_(*connection_),
      watch_(*connection_, ping_),
      pasteboard_(*connection_, watch_, SelectionReach::session) {
    // What was subscribed to counts from now on, not from the loop's first sleep.
    xcb_flush(connection_->xcb());
}

void BridgedPasteboard::replaceContents(const QList<PasteboardItem> &items) {
    pasteboard_.replaceContents(items);
}

LentTextRef BridgedPasteboard::lend(const QString &text, RunningApplicationRef) {
    return pasteboard_.lend(text, nullptr);
}

BridgedClipboard openBridgedClipboard() {
    if (qgetenv("DISPLAY").isEmpty())
        return {};
    auto connection = X11Connection::openWithin(openingLimit);
    if (!connection)
        return {};
    BridgedClipboard bridged;
    bridged.readPrimary = [connection = QPointer(connection.get())] {
        return readPrimary(connection);
    };
    bridged.pasteboard = std::make_unique<BridgedPasteboard>(std::move(connection));
    return bridged;
}

} // namespace quillmender::x11
