#include "platform/linux/wayland/own/KeyboardWatch.h"
#include "platform/linux/wayland/own/LayerPanel.h"

namespace quillmender::wayland {

std::unique_ptr<PanelStanding> makeLayerPanel(KeyboardWatch &keyboard) {
    return keyboard.display() ? std::make_unique<LayerPanel>(keyboard) : nullptr;
}

} // namespace quillmender::wayland
