#include "platform/linux/MaskedText.h"

#include <algorithm>

namespace quillmender {

bool isMask(QStringView text) {
    return !text.isEmpty() && !text.first().isLetterOrNumber() && !text.first().isSpace() &&
           std::all_of(text.begin(), text.end(), [&](QChar sign) { return sign == text.first(); });
}

} // namespace quillmender
