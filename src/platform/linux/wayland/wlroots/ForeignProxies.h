#pragma once

#include "platform/linux/wayland/Proxy.h"

#include <wayland-client-protocol.h>
#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>

namespace quillmender::wayland {

template <> struct ProxyDeleter<zwlr_foreign_toplevel_manager_v1> {
    // Its end is the compositor's; until then windows would be announced to nobody.
    void operator()(zwlr_foreign_toplevel_manager_v1 *manager) const {
        zwlr_foreign_toplevel_manager_v1_destroy(manager);
    }
};

template <> struct ProxyDeleter<zwlr_foreign_toplevel_handle_v1> {
    void operator()(zwlr_foreign_toplevel_handle_v1 *handle) const {
        zwlr_foreign_toplevel_handle_v1_destroy(handle);
    }
};

} // namespace quillmender::wayland
