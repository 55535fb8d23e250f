#pragma once

#include <QtGlobal>
#include <xcb/xcb.h>

// A member of one of its structs is called as a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitParts
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

#include <array>
#include <cstdlib>
#include <memory>

namespace quillmender {

/// StickyKeys of the XKB protocol, as an assistive setting switches them on: modifiers can be
/// pressed one after the other. Two keys at a time switch them off again.
inline void switchStickyKeysOn(xcb_connection_t *connection) {
    xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    constexpr quint32 controls = XCB_XKB_BOOL_CTRL_STICKY_KEYS;
    constexpr quint32 whichAreEnabled = 1U << 31;
    const std::array<quint8, 32> perKeyRepeat{};
    xcb_xkb_set_controls(connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                         controls, controls, whichAreEnabled, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                         0, perKeyRepeat.data());
    xcb_flush(connection);
}

inline bool stickyKeysAreOn(xcb_connection_t *connection) {
    const std::unique_ptr<xcb_xkb_get_controls_reply_t, decltype(&std::free)> controls(
        xcb_xkb_get_controls_reply(
            connection, xcb_xkb_get_controls(connection, XCB_XKB_ID_USE_CORE_KBD), nullptr),
        &std::free);
    return controls && (controls->enabledControls & XCB_XKB_BOOL_CTRL_STICKY_KEYS) != 0;
}

} // namespace quillmender
