#include "platform/linux/x11/selection/IncrSender.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/Xcb.h"

#include <algorithm>

namespace quillmender::x11 {

IncrSender::IncrSender(X11Connection &connection, xcb_window_t requestor, xcb_atom_t property,
                       X11Property contents, std::chrono::milliseconds patience)
    : connection_(connection),
      watch_(connection, requestor),
      requestor_(requestor),
      property_(property),
      contents_(std::move(contents)) {
    connect(&connection_, &X11Connection::eventReceived, this, &IncrSender::handleEvent);
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, [this] {
        qCInfo(x11Log, "window 0x%x stopped taking its data", requestor_);
        finish(false);
    });
    patience_.start(patience);
    constexpr qsizetype most = 0x7fffffff;
    writeCardinals(connection_, requestor_, property_, connection_.atom("INCR"),
                   {static_cast<quint32>(std::min(contents_.value.size(), most))});
}

void IncrSender::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) == XCB_PROPERTY_NOTIFY) {
        const auto &change = eventCast<xcb_property_notify_event_t>(event);
        if (change.window == requestor_ && change.atom == property_ &&
            change.state == XCB_PROPERTY_DELETE)
            sendChunk();
    } else if (eventType(event) == XCB_DESTROY_NOTIFY &&
               eventCast<xcb_destroy_notify_event_t>(event).window == requestor_) {
        finish(false);
    }
}

void IncrSender::sendChunk() {
    // A multiple of every unit. Larger ones would hold up the loop, smaller ones cost round trips.
    constexpr qsizetype preferredChunk = qsizetype{1024} * 1024;
    const qsizetype chunk =
        std::min(preferredChunk, connection_.maximumDataBytes() & ~qsizetype{3});
    const qsizetype left = contents_.value.size() - sent_;
    const qsizetype size = std::min(left, chunk);
    writeProperty(connection_, requestor_, property_,
                  {contents_.type, contents_.format,
                   QByteArray::fromRawData(contents_.value.constData() + sent_, size)});
    xcb_flush(connection_.xcb());
    sent_ += size;
    patience_.start();
    if (size == 0)
        finish(true);
}

void IncrSender::finish(bool isComplete) {
    disconnect(&connection_, nullptr, this, nullptr);
    patience_.stop();
    Q_EMIT finished(isComplete);
}

} // namespace quillmender::x11
