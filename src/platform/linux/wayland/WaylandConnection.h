#pragma once

#include "platform/linux/wayland/CoreProxies.h"

#include <QByteArray>
#include <QCoroTask>
#include <QHash>
#include <QObject>

#include <chrono>
#include <memory>
#include <wayland-client-core.h>

class QSocketNotifier;

namespace quillmender::wayland {

/// The program's own connection to the compositor, beside the toolkit's: its events are dispatched
/// by the event loop of the thread that made it. Nothing here waits for the compositor without a
/// deadline. Objects of the protocol end before it does; its child objects are deleted first.
class WaylandConnection : public QObject {
    Q_OBJECT

  public:
    /// Long enough for a compositor that has much else to do at log-in; until then the toolkit,
    /// which has no limit of its own, would have waited as well.
    static constexpr std::chrono::milliseconds patience{30'000};

    /// Null when there is no compositor, or it has not told its globals within the limit; the log
    /// says so. An empty name is the session's display.
    static std::unique_ptr<WaylandConnection> open(const QByteArray &displayName = {},
                                                   std::chrono::milliseconds limit = patience);
    ~WaylandConnection() override;

    wl_display *display() const { return display_; }

    /// The compositor's version of a global, 0 when it does not offer it.
    quint32 offeredVersion(const wl_interface &interface) const;

    /// The global in the version of both, at most `highest`; null when it is not offered.
    template <typename T> Proxy<T> bind(const wl_interface &interface, quint32 highest) {
        return Proxy<T>(static_cast<T *>(bindAny(interface, highest)));
    }

    /// The first seat that has been announced; null without any.
    wl_seat *seat() const { return seat_.get(); }

    /// Whether everything sent so far was taken note of within the limit. Blocks; for the time
    /// before the event loop runs.
    bool settle(std::chrono::milliseconds limit);

    /// The same without blocking. False at once when the connection is lost or ends meanwhile: who
    /// asked may only then use it when it is still there.
    QCoro::Task<bool> roundTrip(std::chrono::milliseconds limit);

    /// Sends what has been said so far, rather than at the end of the loop's turn.
    void flush();

    bool isLost() const { return readable_ == nullptr; }

  Q_SIGNALS:
    void globalAnnounced(const QByteArray &interface);
    void globalWithdrawn(const QByteArray &interface);
    /// The compositor went away, or found fault with us; nothing works any more.
    void lost();

  private:
    struct Global {
        QByteArray interface;
        quint32 version = 0;
    };
    struct Events;

    explicit WaylandConnection(wl_display *display);
    bool initialize(std::chrono::milliseconds limit);
    void *bindAny(const wl_interface &interface, quint32 highest);
    void announce(quint32 name, const QByteArray &interface, quint32 version);
    void withdraw(quint32 name);
    void prepareToSleep();
    void readAndDispatch();
    void dispatchPending();
    void closeDown();

    wl_display *display_;
    std::unique_ptr<QSocketNotifier> readable_;
    std::unique_ptr<QSocketNotifier> writable_; ///< enabled while the compositor takes nothing
    Proxy<wl_registry> registry_;
    Proxy<wl_seat> seat_;
    quint32 seatName_ = 0;
    QHash<quint32, Global> globals_;
};

} // namespace quillmender::wayland
