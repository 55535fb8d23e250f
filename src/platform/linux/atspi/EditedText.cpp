#include "platform/linux/atspi/EditedText.h"

#include "platform/linux/atspi/TextSplice.h"

namespace quillmender {

std::optional<TextRange> rangeAfterEdit(const QString &before, const QString &after,
                                        TextRange range) {
    if (before == after)
        return range;
    const TextSplice edit = computeSplice(before, after);
    if (edit.start >= range.location + range.length)
        return range;
    if (edit.start + edit.removed.size() <= range.location)
        return TextRange{range.location + edit.inserted.size() - edit.removed.size(), range.length};
    return std::nullopt;
}

} // namespace quillmender
