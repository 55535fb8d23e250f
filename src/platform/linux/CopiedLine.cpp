#include "platform/linux/CopiedLine.h"

#include <algorithm>
#include <array>

namespace quillmender {

namespace {
/// Parts of names.
constexpr std::array tableFormats{"csv", "gnumeric", "openoffice", "spreadsheet", "sylk", "biff"};
} // namespace

bool canBeCopiedLine(QStringView text) {
    return text.endsWith(u'\n') && text.indexOf(u'\n') == text.size() - 1;
}

bool isFormatOfTable(const QByteArray &format) {
    const QByteArray name = format.toLower();
    return std::ranges::any_of(tableFormats, [&](const char *part) { return name.contains(part); });
}

} // namespace quillmender
