#include "platform/linux/wayland/RoundTrip.h"

namespace quillmender::wayland {

RoundTrip::RoundTrip(wl_display *display) : callback_(wl_display_sync(display)) {
    static constexpr wl_callback_listener listener{handleDone};
    wl_callback_add_listener(callback_.get(), &listener, this);
}

void RoundTrip::handleDone(void *self, wl_callback *, uint32_t) {
    auto &trip = *static_cast<RoundTrip *>(self);
    trip.callback_.reset();
    Q_EMIT trip.over();
}

} // namespace quillmender::wayland
