#pragma once

#include <QByteArray>
#include <QString>

namespace quillmender {

/// The text without white space and line breaks (Unicode's) at its ends.
QString trimmed(const QString &text);

/// The text in UTF-8, which is always valid: half a surrogate pair becomes U+FFFD.
QByteArray toValidUtf8(const QString &text);

} // namespace quillmender
