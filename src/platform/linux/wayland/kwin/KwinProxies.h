#pragma once

#include "platform/linux/wayland/CoreProxies.h"

#include <fake-input-client-protocol.h>
#include <keystate-client-protocol.h>
#include <plasma-window-management-client-protocol.h>

namespace quillmender::wayland {

// These have an ending of their own in later versions only: before, the object is forgotten here.

template <> struct ProxyDeleter<org_kde_kwin_fake_input> {
    void operator()(org_kde_kwin_fake_input *input) const {
        if (org_kde_kwin_fake_input_get_version(input) >=
            ORG_KDE_KWIN_FAKE_INPUT_DESTROY_SINCE_VERSION)
            org_kde_kwin_fake_input_destroy(input);
        else
            wl_proxy_destroy(reinterpret_cast<wl_proxy *>(input));
    }
};

template <> struct ProxyDeleter<org_kde_kwin_keystate> {
    void operator()(org_kde_kwin_keystate *keystate) const {
        if (org_kde_kwin_keystate_get_version(keystate) >=
            ORG_KDE_KWIN_KEYSTATE_DESTROY_SINCE_VERSION)
            org_kde_kwin_keystate_destroy(keystate);
        else
            wl_proxy_destroy(reinterpret_cast<wl_proxy *>(keystate));
    }
};

template <> struct ProxyDeleter<org_kde_plasma_window_management> {
    void operator()(org_kde_plasma_window_management *management) const {
        org_kde_plasma_window_management_destroy(management);
    }
};

template <> struct ProxyDeleter<org_kde_plasma_window> {
    void operator()(org_kde_plasma_window *window) const { org_kde_plasma_window_destroy(window); }
};

} // namespace quillmender::wayland
