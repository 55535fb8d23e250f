#pragma once

#include "platform/linux/wayland/Proxy.h"

#include <ext-data-control-v1-client-protocol.h>
#include <wlr-data-control-unstable-v1-client-protocol.h>

namespace quillmender::wayland {

// The two protocols are one on the wire, which has numbers and no names: once the manager is bound
// by the name that the compositor offers, the objects of both are spoken to alike.
static_assert(EXT_DATA_CONTROL_MANAGER_V1_CREATE_DATA_SOURCE ==
              ZWLR_DATA_CONTROL_MANAGER_V1_CREATE_DATA_SOURCE);
static_assert(EXT_DATA_CONTROL_MANAGER_V1_GET_DATA_DEVICE ==
              ZWLR_DATA_CONTROL_MANAGER_V1_GET_DATA_DEVICE);
static_assert(EXT_DATA_CONTROL_MANAGER_V1_DESTROY == ZWLR_DATA_CONTROL_MANAGER_V1_DESTROY);
static_assert(EXT_DATA_CONTROL_DEVICE_V1_SET_SELECTION ==
              ZWLR_DATA_CONTROL_DEVICE_V1_SET_SELECTION);
static_assert(EXT_DATA_CONTROL_DEVICE_V1_SET_PRIMARY_SELECTION ==
              ZWLR_DATA_CONTROL_DEVICE_V1_SET_PRIMARY_SELECTION);
static_assert(EXT_DATA_CONTROL_DEVICE_V1_DESTROY == ZWLR_DATA_CONTROL_DEVICE_V1_DESTROY);
static_assert(EXT_DATA_CONTROL_SOURCE_V1_OFFER == ZWLR_DATA_CONTROL_SOURCE_V1_OFFER);
static_assert(EXT_DATA_CONTROL_SOURCE_V1_DESTROY == ZWLR_DATA_CONTROL_SOURCE_V1_DESTROY);
static_assert(EXT_DATA_CONTROL_OFFER_V1_RECEIVE == ZWLR_DATA_CONTROL_OFFER_V1_RECEIVE);
static_assert(EXT_DATA_CONTROL_OFFER_V1_DESTROY == ZWLR_DATA_CONTROL_OFFER_V1_DESTROY);

template <> struct ProxyDeleter<zwlr_data_control_manager_v1> {
    void operator()(zwlr_data_control_manager_v1 *manager) const {
        zwlr_data_control_manager_v1_destroy(manager);
    }
};

template <> struct ProxyDeleter<zwlr_data_control_device_v1> {
    void operator()(zwlr_data_control_device_v1 *device) const {
        zwlr_data_control_device_v1_destroy(device);
    }
};

template <> struct ProxyDeleter<zwlr_data_control_source_v1> {
    void operator()(zwlr_data_control_source_v1 *source) const {
        zwlr_data_control_source_v1_destroy(source);
    }
};

template <> struct ProxyDeleter<zwlr_data_control_offer_v1> {
    void operator()(zwlr_data_control_offer_v1 *offer) const {
        zwlr_data_control_offer_v1_destroy(offer);
    }
};

} // namespace quillmender::wayland
