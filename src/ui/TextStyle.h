#pragma once

#include <QFont>

namespace quillmender {

/// The one type scale of every window.
enum class TextStyle { largeTitle, title, headline, body, subheadline, caption };

/// The platform's font in that style. Grows with the platform's text size, never below the scale;
/// the two titles have sizes of their own.
QFont fontFor(TextStyle style);

/// How much larger the platform's text is than the scale's own; at least 1.
double textScale();

/// So many pixels as they grow with the text.
int grown(int pixels);

/// The size of a symbol that stands beside a text: about the height of its line.
int symbolForText();

} // namespace quillmender
