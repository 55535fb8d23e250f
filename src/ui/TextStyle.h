#pragma once

#include <QFont>

namespace quillmender {

/// The one type scale of every window.
enum class TextStyle { largeTitle, title, headline, body, subheadline, caption };

/// The platform's font in that style. Grows with the platform's text size, never below the scale;
/// the two titles have sizes of their own.
QFont fontFor(TextStyle style);

} // namespace quillmender
