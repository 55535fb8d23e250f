#pragma once

#include <QString>

namespace quillmender {

/// The text on one line: line feeds and tabs as spaces, trimmed, at most 180 user-perceived
/// characters and "…" after them when there are more.
QString textPreview(const QString &text);

} // namespace quillmender
