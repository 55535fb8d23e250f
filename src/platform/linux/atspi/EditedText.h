#pragma once

#include "platform/TextRange.h"

#include <QString>

#include <optional>

namespace quillmender::atspi {

/// Where the text that stood in `range` of `before` stands in `after`, when what was edited in
/// between lies wholly before or behind it. Absent when it was edited itself, or is gone: then
/// other words stand there.
std::optional<TextRange> rangeAfterEdit(const QString &before, const QString &after,
                                        TextRange range);

} // namespace quillmender::atspi
