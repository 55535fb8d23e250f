#include "platform/linux/wayland/clipboard/LineCopy.h"

#include "platform/linux/CopiedLine.h"
#include "platform/linux/wayland/clipboard/SelectionReader.h"

#include <algorithm>

namespace quillmender::wayland {

namespace {

bool isOfTable(const DataOffer *offer) {
    return offer && std::ranges::any_of(offer->types(), isFormatOfTable);
}

} // namespace

QCoro::Task<bool> wasLineCopied(DataControl &control, QString text) {
    if (!canBeCopiedLine(text))
        co_return false;
    if (isOfTable(control.offer(Selection::clipboard).get()))
        co_return false;
    SelectionReader primary(control, Selection::primary);
    const std::optional<QString> selected = co_await primary.readText();
    // A selection of old may have the same words, but the line end is the editor's own.
    co_return selected != text;
}

} // namespace quillmender::wayland
