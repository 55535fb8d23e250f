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

template <> struct ProxyDeleter<wl_keyboard> {
    void operator()(wl_keyboard *keyboard) const {
        if (wl_keyboard_get_version(keyboard) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
            wl_keyboard_release(keyboard);
        else
            wl_keyboard_destroy(keyboard);
    }
};

template <> struct ProxyDeleter<wl_output> {
    void operator()(wl_output *output) const {
        if (wl_output_get_version(output) >= WL_OUTPUT_RELEASE_SINCE_VERSION)
            wl_output_release(output);
        else
            wl_output_destroy(output);
    }
};

} // namespace quillmender::wayland
