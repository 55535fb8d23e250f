#pragma once

#include <QByteArray>
#include <QList>
#include <QTemporaryDir>

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <wayland-server-core.h>

namespace quillmender::wayland {

/// A compositor that has a seat and selections and nothing else, in a thread of its own. It says
/// what a test wants it to, whether that makes sense or not.
class ScriptedCompositor {
  public:
    /// What it calls the protocol of the selections, with the version of its manager.
    struct Protocol {
        const wl_interface *manager;
        const wl_interface *device;
        const wl_interface *source;
        const wl_interface *offer;
        int version;
    };
    static Protocol ext();
    static Protocol wlr(int version);

    explicit ScriptedCompositor(const QList<Protocol> &protocols);
    ScriptedCompositor(const ScriptedCompositor &) = delete;
    ScriptedCompositor &operator=(const ScriptedCompositor &) = delete;
    ~ScriptedCompositor();

    /// Of the socket, as a path.
    QByteArray display() const;

    /// Runs it in the compositor's thread and waits until it is done and what it said is out.
    void run(const std::function<void()> &script);

    // What follows is for scripts.

    /// Announces an offer with types. It is answered with the type's own name.
    wl_resource *announce(const QList<QByteArray> &types);
    static void addType(wl_resource *offer, const QByteArray &type);
    void select(wl_resource *offer);
    void selectPrimary(wl_resource *offer);
    void finish();
    static void ask(wl_resource *source, const QByteArray &type, int pipe);
    static void cancel(wl_resource *source);
    void withdrawSeat();
    void announceSeat();

    QByteArray boundProtocol; ///< the interface of the manager that was bound last
    int devices = 0;          ///< that have been made so far
    wl_resource *device = nullptr;
    wl_resource *source = nullptr; ///< what was set as clipboard last
    QList<QByteArray> sourceTypes;
    std::function<void()> whenSet; ///< called each time that the clipboard has been set
    QList<wl_resource *> offers;   ///< that the client has not destroyed
    QList<QByteArray> received;    ///< the types of offers that it has asked for

  private:
    struct Requests;

    struct Bound {
        ScriptedCompositor *self;
        Protocol protocol;
    };

    void serve();

    QTemporaryDir folder_;
    wl_display *display_;
    wl_global *seat_ = nullptr;
    QList<Bound *> bound_;
    Protocol current_{};
    std::mutex mutex_;
    std::function<void()> script_;
    int wake_ = -1;
    std::atomic_bool isOver_ = false;
    std::thread thread_;
};

} // namespace quillmender::wayland
