#include "platform/linux/atspi/EditedText.h"

namespace quillmender::atspi {

// What stands before or behind an edit is looked at, not the edit: of a letter that was typed
// beside an equal one nobody can tell which of the two is new.
std::optional<TextRange> rangeAfterEdit(const QString &before, const QString &after,
                                        TextRange range) {
    if (before == after)
        return range;
    const qint64 end = range.location + range.length;
    if (range.location < 0 || range.length < 0 || end > before.size())
        return std::nullopt;
    if (after.startsWith(QStringView(before).first(end)))
        return range;
    const QStringView fromItsStart = QStringView(before).sliced(range.location);
    if (after.endsWith(fromItsStart))
        return TextRange{after.size() - fromItsStart.size(), range.length};
    return std::nullopt;
}

} // namespace quillmender::atspi
