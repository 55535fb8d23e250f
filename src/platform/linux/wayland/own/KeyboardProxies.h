#pragma once

#include "platform/linux/wayland/CoreProxies.h"

namespace quillmender::wayland {

template <> struct ProxyDeleter<wl_keyboard> {
    void operator()(wl_keyboard *keyboard) const {
        if (wl_keyboard_get_version(keyboard) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
            wl_keyboard_release(keyboard);
        else
            wl_keyboard_destroy(keyboard);
    }
};

} // namespace quillmender::wayland
