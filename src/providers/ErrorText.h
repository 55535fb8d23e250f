#pragma once

#include <QString>

namespace quillmender {

/// An error in somebody else's words, fit to be shown: at most some thousand characters of it, and
/// without the key, should it be repeated there.
QString errorText(const QString &text, const QString &apiKey);

} // namespace quillmender
