#pragma once

#include <QString>

namespace quillmender::bench {

/// Lines of words, with some characters that JSON escapes and some beyond ASCII.
inline QString plainText(qsizetype length) {
    const auto line = QStringLiteral("She said \"naïve\", and left\tthe room: 😀 fin.\n");
    return line.repeated(length / line.size() + 1).first(length);
}

} // namespace quillmender::bench
