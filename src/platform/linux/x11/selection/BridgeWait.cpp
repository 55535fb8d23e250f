#include "platform/linux/x11/selection/BridgeWait.h"

#include "platform/SignalWait.h"
#include "platform/linux/x11/Xcb.h"

#include <QDeadlineTimer>
#include <QFutureWatcher>
#include <QPromise>
#include <xcb/xfixes.h>

#include <array>
#include <cerrno>
#include <poll.h>
#include <string_view>
#include <thread>

namespace quillmender::x11 {

using namespace std::chrono_literals;

namespace {

/// One look at the selections, on a connection of its own, in a thread of its own: the server may
/// be busy with a new keyboard just then.
class BridgeWait {
  public:
    explicit BridgeWait(QDeadlineTimer deadline) : deadline_(deadline) {}

    bool run() {
        if (xcb_connection_has_error(xcb_.get()) != 0 || !subscribe())
            return true;
        const xcb_window_t manager = ownerOf(atom("WM_S0"));
        if (manager == XCB_WINDOW_NONE)
            return true;
        while (!isBridged(manager)) {
            if (deadline_.hasExpired() || xcb_connection_has_error(xcb_.get()) != 0)
                return false;
            waitForEvent();
        }
        return true;
    }

  private:
    xcb_atom_t atom(std::string_view name) {
        const auto reply =
            replyTo(xcb_.get(), xcb_intern_atom_reply,
                    xcb_intern_atom(xcb_.get(), 0, quint16(name.size()), name.data()));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }

    xcb_window_t ownerOf(xcb_atom_t selection) {
        const auto reply = replyTo(xcb_.get(), xcb_get_selection_owner_reply,
                                   xcb_get_selection_owner(xcb_.get(), selection));
        return reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
    }

    bool subscribe() {
        const auto *fixes = xcb_get_extension_data(xcb_.get(), &xcb_xfixes_id);
        if (!fixes || fixes->present == 0)
            return false;
        const auto version = replyTo(xcb_.get(), xcb_xfixes_query_version_reply,
                                     xcb_xfixes_query_version(xcb_.get(), 1, 0));
        const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(xcb_.get()));
        if (!version || screens.rem == 0)
            return false;
        selections_ = {atom("CLIPBOARD"), XCB_ATOM_PRIMARY};
        for (const xcb_atom_t selection : selections_)
            xcb_xfixes_select_selection_input(xcb_.get(), screens.data->root, selection,
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
        return true;
    }

    /// A client's windows differ from each other in these bits only.
    bool isBridged(xcb_window_t manager) {
        const quint32 own = xcb_get_setup(xcb_.get())->resource_id_mask;
        for (const xcb_atom_t selection : selections_) {
            const xcb_window_t owner = ownerOf(selection);
            if (owner != XCB_WINDOW_NONE && (owner & ~own) != (manager & ~own))
                return false;
        }
        return true;
    }

    void waitForEvent() {
        while (adoptXcb(xcb_poll_for_queued_event(xcb_.get()))) {
        }
        pollfd server{xcb_get_file_descriptor(xcb_.get()), POLLIN, 0};
        ::poll(&server, 1, int(deadline_.remainingTime()));
        while (adoptXcb(xcb_poll_for_event(xcb_.get()))) {
        }
    }

    QDeadlineTimer deadline_;
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> xcb_{xcb_connect(nullptr, nullptr),
                                                                      &xcb_disconnect};
    std::array<xcb_atom_t, 2> selections_{};
};

} // namespace

QCoro::Task<bool> waitForBridge(std::chrono::milliseconds limit) {
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        co_return true;
    const auto promise = std::make_shared<QPromise<bool>>();
    promise->start();
    QFutureWatcher<bool> watcher;
    watcher.setFuture(promise->future());
    // Nobody can end it while a server that hangs has not answered.
    std::thread([promise, deadline = QDeadlineTimer(limit)] {
        promise->addResult(BridgeWait(deadline).run());
        promise->finish();
    }).detach();
    const bool isDecided =
        co_await SignalWait(&watcher, &QFutureWatcher<bool>::finished, limit + 50ms);
    const bool isBridged = isDecided && watcher.result();
    if (!isBridged)
        qCWarning(x11Log, "the X server has not learned what Wayland programs offer");
    co_return isBridged;
}

} // namespace quillmender::x11
