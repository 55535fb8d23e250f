#pragma once

#include "platform/PasteboardItem.h"

namespace quillmender {

/// Everything that the pasteboard held at one moment.
struct PasteboardSnapshot {
    qint64 changeCount = 0;
    QList<PasteboardItem> items;
    /// False when its owner was too slow: it has to be taken again before the pasteboard is
    /// borrowed.
    bool isComplete = true;
};

} // namespace quillmender
