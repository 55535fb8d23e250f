#include "platform/linux/wayland/own/ToolkitDisplay.h"

namespace quillmender::wayland {

// The toolkit of this release hands it to no program.
wl_display *toolkitDisplay() {
    return nullptr;
}

} // namespace quillmender::wayland
