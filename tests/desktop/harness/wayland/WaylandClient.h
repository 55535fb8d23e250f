#pragma once

#include "desktop/harness/Waiter.h"

#include <QByteArray>
#include <QHash>

#include <memory>
#include <wayland-client-core.h>

struct wl_registry;
struct wl_seat;

namespace quillmender::harness {

/// Ends an object on this side; on the compositor's it ends with the connection.
struct ProxyEnd {
    template <typename T> void operator()(T *proxy) const {
        wl_proxy_destroy(reinterpret_cast<wl_proxy *>(proxy));
    }
};
template <typename T> using Held = std::unique_ptr<T, ProxyEnd>;

/// A connection of the test's own to a compositor. It is used from one thread, which reads its
/// events when it asks for them.
class WaylandClient {
  public:
    /// By the path of the socket. Throws HarnessError where no compositor answers.
    explicit WaylandClient(const QString &socketPath);
    WaylandClient(const WaylandClient &) = delete;
    WaylandClient &operator=(const WaylandClient &) = delete;
    ~WaylandClient();

    wl_display *display() const { return display_; }
    wl_seat *seat() const { return seat_.get(); }

    bool offers(const wl_interface &interface) const {
        return globals_.contains(QByteArray(interface.name));
    }

    /// Throws HarnessError where the compositor does not offer it to this program.
    template <typename T> Held<T> bind(const wl_interface &interface, quint32 highest) {
        return Held<T>(static_cast<T *>(bindAny(interface, highest)));
    }

    /// Waits until the compositor has come to everything that was said so far, with its answers.
    void roundTrip();

    /// Takes note of what has come; false when the connection has been lost.
    bool dispatch();

  private:
    struct Global {
        quint32 name = 0;
        quint32 version = 0;
    };
    struct Events;

    void *bindAny(const wl_interface &interface, quint32 highest);

    wl_display *display_;
    Held<wl_registry> registry_;
    Held<wl_seat> seat_;
    QHash<QByteArray, Global> globals_;
};

} // namespace quillmender::harness
