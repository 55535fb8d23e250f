#include "platform/linux/wayland/WaylandConnection.h"

#include "platform/Clock.h"
#include "platform/SignalWait.h"
#include "platform/linux/LaterPointer.h"
#include "platform/linux/wayland/RoundTrip.h"

#include <QAbstractEventDispatcher>
#include <QDeadlineTimer>
#include <QLoggingCategory>
#include <QSocketNotifier>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <poll.h>

namespace quillmender::wayland {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)

constexpr quint32 highestSeat = 5; // nothing newer is used

} // namespace

struct WaylandConnection::Events {
    static void announced(void *self, wl_registry *, uint32_t name, const char *interface,
                          uint32_t version) {
        static_cast<WaylandConnection *>(self)->announce(name, interface, version);
    }
    static void withdrawn(void *self, wl_registry *, uint32_t name) {
        static_cast<WaylandConnection *>(self)->withdraw(name);
    }
    static constexpr wl_registry_listener registry{announced, withdrawn};
};

std::unique_ptr<WaylandConnection> WaylandConnection::open(const QByteArray &displayName,
                                                           std::chrono::milliseconds limit) {
    wl_display *const display =
        wl_display_connect(displayName.isEmpty() ? nullptr : displayName.constData());
    if (!display)
        return nullptr;
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection(display));
    if (!connection->initialize(limit)) {
        if (!connection->isLost())
            qCWarning(log, "the compositor has not answered for %lld s",
                      static_cast<long long>(limit / std::chrono::seconds(1)));
        return nullptr;
    }
    return connection;
}

WaylandConnection::WaylandConnection(wl_display *display) : display_(display) {}

WaylandConnection::~WaylandConnection() {
    // Their objects still speak to the compositor when they end.
    while (!children().isEmpty())
        delete children().constFirst();
    seat_.reset();
    registry_.reset();
    if (!isLost())
        wl_display_flush(display_);
    readable_.reset();
    writable_.reset();
    wl_display_disconnect(display_);
}

bool WaylandConnection::initialize(std::chrono::milliseconds limit) {
    const int descriptor = wl_display_get_fd(display_);
    readable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    writable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
    writable_->setEnabled(false);
    connect(readable_.get(), &QSocketNotifier::activated, this,
            &WaylandConnection::readAndDispatch);
    connect(writable_.get(), &QSocketNotifier::activated, this, &WaylandConnection::flush);
    connect(QAbstractEventDispatcher::instance(thread()), &QAbstractEventDispatcher::aboutToBlock,
            this, &WaylandConnection::prepareToSleep);
    registry_.reset(wl_display_get_registry(display_));
    wl_registry_add_listener(registry_.get(), &Events::registry, this);
    return settle(limit);
}

quint32 WaylandConnection::offeredVersion(const wl_interface &interface) const {
    const auto found = std::ranges::find(globals_, QByteArray(interface.name), &Global::interface);
    return found == globals_.end() ? 0 : found->version;
}

void *WaylandConnection::bindAny(const wl_interface &interface, quint32 highest) {
    for (auto global = globals_.cbegin(); global != globals_.cend(); ++global) {
        if (global->interface == interface.name)
            return wl_registry_bind(registry_.get(), global.key(), &interface,
                                    std::min(global->version, highest));
    }
    return nullptr;
}

void WaylandConnection::announce(quint32 name, const QByteArray &interface, quint32 version) {
    globals_.insert(name, {interface, version});
    if (!seat_ && interface == wl_seat_interface.name) {
        seatName_ = name;
        seat_ = bind<wl_seat>(wl_seat_interface, highestSeat);
    }
    Q_EMIT globalAnnounced(interface);
}

void WaylandConnection::withdraw(quint32 name) {
    const Global gone = globals_.take(name);
    if (name == seatName_) {
        seat_.reset();
        seatName_ = 0;
    }
    Q_EMIT globalWithdrawn(gone.interface);
}

bool WaylandConnection::settle(std::chrono::milliseconds limit) {
    RoundTrip trip(display_);
    const QDeadlineTimer deadline(limit);
    while (!isLost() && !trip.isOver()) {
        if (wl_display_prepare_read(display_) != 0) {
            dispatchPending();
            continue;
        }
        flush();
        pollfd socket{wl_display_get_fd(display_), POLLIN, 0};
        const int ready = poll(&socket, 1, static_cast<int>(deadline.remainingTime()));
        if (ready <= 0) {
            wl_display_cancel_read(display_);
            if (ready < 0 && errno == EINTR)
                continue;
            return false;
        }
        if (wl_display_read_events(display_) < 0) {
            closeDown();
            return false;
        }
        dispatchPending();
    }
    return trip.isOver();
}

QCoro::Task<bool> WaylandConnection::roundTrip(std::chrono::milliseconds limit) {
    if (isLost())
        co_return false;
    // It ends with the connection, whose display it speaks to, whoever still waits.
    const LaterPointer<RoundTrip> trip(new RoundTrip(display_));
    trip->setParent(this);
    connect(this, &WaylandConnection::lost, trip.get(), &RoundTrip::over);
    flush();
    try {
        co_await SignalWait(trip.get(), &RoundTrip::over, limit);
    } catch (const CancellationError &) {
        co_return false;
    }
    co_return trip.get() && trip->isOver();
}

void WaylandConnection::flush() {
    if (isLost())
        return;
    const bool isStuck = wl_display_flush(display_) < 0 && errno == EAGAIN;
    writable_->setEnabled(isStuck);
}

void WaylandConnection::prepareToSleep() {
    if (isLost())
        return;
    flush();
    // Whoever read from the socket outside the loop may have left events in the queue, which the
    // socket does not announce any more. Handlers run from an event of their own.
    if (wl_display_prepare_read(display_) == 0)
        wl_display_cancel_read(display_);
    else
        QMetaObject::invokeMethod(this, &WaylandConnection::dispatchPending, Qt::QueuedConnection);
}

void WaylandConnection::readAndDispatch() {
    if (isLost())
        return;
    if (wl_display_prepare_read(display_) == 0 && wl_display_read_events(display_) < 0) {
        closeDown();
        return;
    }
    dispatchPending();
}

void WaylandConnection::dispatchPending() {
    if (isLost())
        return;
    if (wl_display_dispatch_pending(display_) < 0)
        closeDown();
    else
        flush();
}

void WaylandConnection::closeDown() {
    if (isLost())
        return;
    const wl_interface *interface = nullptr;
    if (wl_display_get_error(display_) == EPROTO) {
        const quint32 code = wl_display_get_protocol_error(display_, &interface, nullptr);
        qCWarning(log, "the compositor ends the connection: error %u of %s", code,
                  interface ? interface->name : "an object that has gone");
    } else {
        qCWarning(log, "the compositor is gone");
    }
    readable_->setEnabled(false);
    writable_->setEnabled(false);
    readable_.release()->deleteLater();
    writable_.release()->deleteLater();
    Q_EMIT lost();
}

} // namespace quillmender::wayland
