#include "platform/linux/atspi/TextSplice.h"

#include <algorithm>

namespace quillmender::atspi {

TextSplice computeSplice(const QString &from, const QString &to) {
    const qsizetype shorter = std::min(from.size(), to.size());
    qsizetype prefix = 0;
    while (prefix < shorter && from[prefix] == to[prefix])
        ++prefix;
    if (prefix > 0 && from[prefix - 1].isHighSurrogate())
        --prefix;

    qsizetype suffix = 0;
    while (suffix < shorter - prefix &&
           from[from.size() - 1 - suffix] == to[to.size() - 1 - suffix])
        ++suffix;
    if (suffix > 0 && from[from.size() - suffix].isLowSurrogate())
        --suffix;

    return {prefix, from.mid(prefix, from.size() - prefix - suffix),
            to.mid(prefix, to.size() - prefix - suffix)};
}

} // namespace quillmender::atspi
