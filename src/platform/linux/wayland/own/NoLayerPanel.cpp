#include "platform/linux/wayland/own/PanelStanding.h"

namespace quillmender::wayland {

std::unique_ptr<PanelStanding> makeLayerPanel(KeyboardWatch &) {
    return nullptr;
}

} // namespace quillmender::wayland
