#pragma once

#include <QtGlobal>
#include <xcb/xcb.h>

namespace quillmender {

/// The latest paste chord that was typed, so that the pasteboard can tell the request that it
/// causes from those of clipboard managers.
struct PasteRecord {
    quint64 count = 0;
    xcb_window_t window = XCB_WINDOW_NONE;
    /// Which application was last brought to the front: the one that is going to be pasted into.
    xcb_window_t source = XCB_WINDOW_NONE;
};

} // namespace quillmender
