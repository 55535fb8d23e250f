#include "platform/linux/wayland/clipboard/PrimarySelection.h"

#include "platform/linux/wayland/clipboard/SelectionReader.h"

namespace quillmender::wayland {

PrimarySelection::PrimarySelection(DataControl &control) : control_(control) {
    connect(&control_, &DataControl::offered, this, [this](Selection changed) {
        if (changed == Selection::primary)
            ++changes_;
    });
    connect(&control_, &DataControl::ended, this, [this] { ++changes_; });
}

QCoro::Task<std::optional<QString>> PrimarySelection::primaryText(std::chrono::milliseconds limit) {
    SelectionReader reader(control_, Selection::primary);
    co_return co_await reader.readText(limit);
}

} // namespace quillmender::wayland
