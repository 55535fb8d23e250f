#pragma once

#include "platform/PasteboardItem.h"

namespace quillmender {

/// Everything that the pasteboard held at one moment.
struct PasteboardSnapshot {
    qint64 changeCount = 0;
    QList<PasteboardItem> items;
};

} // namespace quillmender
