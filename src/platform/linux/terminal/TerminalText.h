#pragma once

#include <QString>

namespace quillmender {

/// What may be pasted into a terminal of a text that somebody else wrote: nothing in it presses
/// Enter behind the last line or begins an escape sequence.
struct TerminalText {
    /// Without control characters other than tabs and the line feeds between lines.
    QString text;
    /// A program that reads lines takes each but the last one for a command.
    bool hasSeveralLines = false;
};

TerminalText makeTerminalText(const QString &text);

/// The text as one line: a space for each line end.
QString onOneLine(QString text);

} // namespace quillmender
