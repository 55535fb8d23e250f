#pragma once

#include <QByteArray>
#include <QString>

namespace quillmender {

/// The text without white space and line breaks (Unicode's) at its ends.
QString trimmed(const QString &text);

/// A key without white space and line breaks at its ends, nor anything there that nobody sees, such
/// as the byte order mark that a copied text can begin with.
QString trimmedKey(const QString &key);

/// The text in UTF-8, which is always valid: half a surrogate pair becomes U+FFFD.
QByteArray toValidUtf8(const QString &text);

} // namespace quillmender
