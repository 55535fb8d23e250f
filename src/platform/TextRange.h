#pragma once

#include <QtGlobal>

namespace quillmender {

/// A stretch of a text, counted in UTF-16 code units.
struct TextRange {
    qint64 location = 0;
    qint64 length = 0;

    friend bool operator==(const TextRange &, const TextRange &) = default;
};

} // namespace quillmender
