#pragma once

#include "platform/linux/Obstacle.h"

#include <QCoroTask>

#include <functional>

namespace quillmender {

/// What a lent text is to who types the chord that pastes it.
class PasteText {
  public:
    /// Whether line ends and tabs are text to the program that is pasted into now.
    using TakesLineEnds = std::function<bool()>;

    PasteText() = default;
    PasteText(const PasteText &) = delete;
    PasteText &operator=(const PasteText &) = delete;
    virtual ~PasteText() = default;

    /// Whether it still is what this program has put on the pasteboard.
    virtual bool isOffered() const = 0;

    /// Makes it one for a terminal (TerminalText), as clipboard and as PRIMARY. An obstacle is a
    /// text with nothing in it to paste, or with several lines where the program does not take
    /// them; that is asked again whenever somebody asks for the text.
    virtual QCoro::Task<Obstacle> lendToTerminal(TakesLineEnds takesLineEnds) = 0;

    /// Called right before the key that makes the chord goes down: who asks from now on is pasting.
    /// Not for those who hear of chords otherwise.
    virtual void noteChord() {}

    /// Whether what a terminal would paste now is what was lent to it.
    virtual bool isLentToTerminal() const = 0;
};

} // namespace quillmender
