#pragma once

#include <QString>

namespace quillmender {

/// What is written in the editor, the word in it that is selected, and what goes wrong.
inline const QString letter = QStringLiteral("Hello, you recieve it.");
inline const QString wrong = QStringLiteral("recieve");
inline const QString failureMessage = QStringLiteral("The provider is out of order.");

} // namespace quillmender
