#pragma once

#include <QString>

namespace quillmender {

/// So many characters can stand for one of a secret.
inline constexpr qsizetype longestDisguise = 6;

/// Puts bullets in the place of the secret wherever the text shows it to a reader: in whatever
/// case, with blanks, line ends or invisible marks in between, with characters escaped as in
/// addresses
/// (%2D) or in JSON (\u002d). As many bullets as characters, so that nothing behind moves. A secret
/// of fewer than eight characters could not be told from other words and is left.
void maskSecret(QString &text, const QString &secret);

} // namespace quillmender
