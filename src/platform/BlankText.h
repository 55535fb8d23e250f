#pragma once

#include <QString>

#include <optional>

namespace quillmender {

/// Whether there is no text, or one of white space and line ends alone.
inline bool isBlank(const std::optional<QString> &text) {
    return !text || QStringView(*text).trimmed().isEmpty();
}

} // namespace quillmender
