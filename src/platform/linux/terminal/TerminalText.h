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
    /// A program that reads lines takes each for the key that completes a word, and may run what
    /// stands on the line to find out how.
    bool hasTabs = false;
};

TerminalText makeTerminalText(const QString &text);

/// The text as one line without tabs: a space for each line end and for each tab.
QString onOneLine(QString text);

} // namespace quillmender
