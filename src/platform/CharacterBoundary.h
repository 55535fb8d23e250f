#pragma once

#include "platform/TextRange.h"

#include <QString>

namespace quillmender {

/// Whether the range lies inside the text and neither end splits a user-perceived character (a
/// surrogate pair, CR LF, a letter with its marks, an emoji sequence).
bool fallsOnCharacterBoundaries(const QString &text, TextRange range);

} // namespace quillmender
