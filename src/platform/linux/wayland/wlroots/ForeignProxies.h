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

template <> struct ProxyDeleter<wl_output> {
    void operator()(wl_output *output) const {
        if (wl_output_get_version(output) >= WL_OUTPUT_RELEASE_SINCE_VERSION)
            wl_output_release(output);
        else
            wl_output_destroy(output);
    }
};

} // namespace quillmender::wayland
