#pragma once

#include "platform/linux/wayland/Proxy.h"

#include <wayland-client-protocol.h>

namespace quillmender::wayland {

template <> struct ProxyDeleter<wl_registry> {
    void operator()(wl_registry *registry) const { wl_registry_destroy(registry); }
};

template <> struct ProxyDeleter<wl_callback> {
    void operator()(wl_callback *callback) const { wl_callback_destroy(callback); }
};

template <> struct ProxyDeleter<wl_seat> {
    void operator()(wl_seat *seat) const {
        if (wl_seat_get_version(seat) >= WL_SEAT_RELEASE_SINCE_VERSION)
            wl_seat_release(seat);
        else
            wl_seat_destroy(seat);
    }
};

} // namespace quillmender::wayland
