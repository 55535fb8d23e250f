#include "desktop/sessions/ClipboardManager.h"

#include "desktop/harness/ClipboardProbe.h"

namespace quillmender {

using harness::XcbPointer;

ClipboardManager::ClipboardManager(const QString &display)
    : display_(display),
      connection_(display),
      window_(connection_.createHiddenWindow()),
      notifier_(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read) {
    xcb_set_selection_owner(connection_.get(), window_, connection_.atom("CLIPBOARD_MANAGER"),
                            XCB_CURRENT_TIME);
    connection_.roundTrip();
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                     [this] { handleEvents(); });
}

ClipboardManager::~ClipboardManager() = default;

void ClipboardManager::handleEvents() {
    while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if ((event->response_type & 0x7f) == XCB_SELECTION_REQUEST)
            save(reinterpret_cast<const xcb_selection_request_event_t &>(*event));
    }
}

void ClipboardManager::save(const xcb_selection_request_event_t &request) {
    if (request.target == connection_.atom("SAVE_TARGETS"))
        saved_.emplace(display_, harness::ClipboardProbe(display_).read().representations);
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = request.time;
    answer.requestor = request.requestor;
    answer.selection = request.selection;
    answer.target = request.target;
    answer.property = hasTakenOver() ? request.property : xcb_atom_t{XCB_ATOM_NONE};
    xcb_send_event(connection_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&answer));
    connection_.roundTrip();
}

} // namespace quillmender
