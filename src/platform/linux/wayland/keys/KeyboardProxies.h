#pragma once

#include "platform/linux/wayland/Proxy.h"

#include <virtual-keyboard-unstable-v1-client-protocol.h>

namespace quillmender::wayland {

template <> struct ProxyDeleter<zwp_virtual_keyboard_manager_v1> {
    void operator()(zwp_virtual_keyboard_manager_v1 *manager) const {
        zwp_virtual_keyboard_manager_v1_destroy(manager);
    }
};

template <> struct ProxyDeleter<zwp_virtual_keyboard_v1> {
    void operator()(zwp_virtual_keyboard_v1 *keyboard) const {
        zwp_virtual_keyboard_v1_destroy(keyboard);
    }
};

} // namespace quillmender::wayland
