#include "desktop/harness/wayland/WaylandClient.h"

#include "desktop/harness/HarnessError.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <poll.h>
#include <wayland-client.h>

namespace quillmender::harness {

struct WaylandClient::Events {
    static void announce(void *self, wl_registry * /*registry*/, uint32_t name,
                         const char *interface, uint32_t version) {
        static_cast<WaylandClient *>(self)->globals_.insert(interface, {name, version});
    }
    static void withdraw(void * /*self*/, wl_registry * /*registry*/, uint32_t /*name*/) {}
    static void tellCapabilities(void * /*self*/, wl_seat * /*seat*/, uint32_t /*all*/) {}
    static void answer(void *isOver, wl_callback * /*callback*/, uint32_t /*serial*/) {
        *static_cast<bool *>(isOver) = true;
    }

    static constexpr wl_registry_listener registry{&announce, &withdraw};
    static constexpr wl_seat_listener seat{&tellCapabilities, nullptr};
    static constexpr wl_callback_listener callback{&answer};
};

WaylandClient::WaylandClient(const QString &socketPath)
    : display_(wl_display_connect(QFile::encodeName(socketPath).constData())) {
    if (display_ == nullptr)
        throw HarnessError(QStringLiteral("no compositor at %1").arg(socketPath));
    registry_.reset(wl_display_get_registry(display_));
    wl_registry_add_listener(registry_.get(), &Events::registry, this);
    try {
        roundTrip();
        seat_ = bind<wl_seat>(wl_seat_interface, 1);
        wl_seat_add_listener(seat_.get(), &Events::seat, this);
    } catch (...) {
        registry_.reset();
        wl_display_disconnect(display_);
        throw;
    }
}

WaylandClient::~WaylandClient() {
    seat_.reset();
    registry_.reset();
    wl_display_disconnect(display_);
}

void *WaylandClient::bindAny(const wl_interface &interface, quint32 highest) {
    const auto global = globals_.constFind(interface.name);
    if (global == globals_.constEnd())
        throw HarnessError(
            QStringLiteral("the compositor offers no %1").arg(QLatin1String(interface.name)));
    return wl_registry_bind(registry_.get(), global->name, &interface,
                            std::min(global->version, highest));
}

void WaylandClient::roundTrip() {
    bool isOver = false;
    const Held<wl_callback> question(wl_display_sync(display_));
    wl_callback_add_listener(question.get(), &Events::callback, &isOver);
    QElapsedTimer elapsed;
    elapsed.start();
    while (!isOver) {
        const qint64 left = defaultDeadline.count() - elapsed.elapsed();
        wl_display_flush(display_);
        pollfd source{wl_display_get_fd(display_), POLLIN, 0};
        if (left <= 0 || ::poll(&source, 1, static_cast<int>(left)) == 0)
            throw HarnessError(QStringLiteral("the compositor does not answer"));
        if (!dispatch())
            throw HarnessError(QStringLiteral("the connection to the compositor is lost"));
    }
}

bool WaylandClient::dispatch() {
    while (wl_display_prepare_read(display_) != 0) {
        if (wl_display_dispatch_pending(display_) < 0)
            return false;
    }
    wl_display_flush(display_);
    pollfd source{wl_display_get_fd(display_), POLLIN, 0};
    if (::poll(&source, 1, 0) > 0) {
        if (wl_display_read_events(display_) < 0)
            return false;
    } else {
        wl_display_cancel_read(display_);
    }
    return wl_display_dispatch_pending(display_) >= 0;
}

} // namespace quillmender::harness
