#pragma once

#include "platform/ChordContext.h"
#include "platform/TextRange.h"
#include "platform/Workspace.h"

#include <QCoroTask>
#include <QString>

#include <memory>
#include <optional>

namespace quillmender {

/// The place in another application that a text was read from. Opaque: only the implementation that
/// made it can look inside.
class FocusedElement {
  public:
    FocusedElement() = default;
    FocusedElement(const FocusedElement &) = delete;
    FocusedElement &operator=(const FocusedElement &) = delete;
    virtual ~FocusedElement() = default;
};

using FocusedElementRef = std::shared_ptr<const FocusedElement>;

/// What an application shows where its focus is.
struct FocusReading {
    RunningApplicationRef application{};   ///< whose focus it is; null when nobody knows
    FocusedElementRef element{};           ///< null when nothing of that application has the focus
    std::optional<QString> selectedText{}; ///< never blank
    std::optional<TextRange> selectedRange{}; ///< of the selected text; absent when nobody tells
    std::optional<QString> value{}; ///< the whole text, never blank; only without a selected text
    ChordContextRef chordContext{}; ///< for chords into that application; null when they need none
    bool isElsewhere = false; ///< the focus is in another application or window than asked for
};

/// What came of an order to replace a text.
struct Replacement {
    enum class Outcome {
        done,      ///< the new text was seen to be there, where the system can tell
        refused,   ///< nothing was changed, and nothing is under way
        uncertain, ///< an order is out, and it is not known whether it was or will be carried out
    };
    Outcome outcome = Outcome::refused;
    QString reason{}; ///< of what is not done, in words for the log; never the user's
};

/// What a paste would replace, as far as can be told.
enum class PasteTarget {
    selected, ///< the captured text is selected, or the system leaves that to applications
    unknown,  ///< nobody told what is selected
    gone,     ///< the text has become too short for the range
    another,  ///< something else was seen to be selected, or to stand where the captured text stood
};

/// The text of other applications' user interfaces, where the focus is. Every text and range is
/// counted in UTF-16 code units. Every operation has a deadline of its own: a silent application
/// costs less than a second, but for an order that is out, whose outcome is awaited for some
/// seconds.
class FocusedText {
  public:
    FocusedText() = default;
    FocusedText(const FocusedText &) = delete;
    FocusedText &operator=(const FocusedText &) = delete;
    virtual ~FocusedText() = default;

    /// All that a capture needs of the focused element of this application. Null asks for the
    /// application that accessibility itself knows to be in front, where it knows one. A password
    /// field has an element and no text.
    virtual QCoro::Task<FocusReading> read(RunningApplicationRef application) = 0;

    /// Learns where the focus is, without reading any text, so that the first reading finds it as
    /// soon as later ones do.
    virtual QCoro::Task<> prepare() { co_return; }

    /// What is selected in the element now.
    virtual QCoro::Task<std::optional<TextRange>> selectedRange(FocusedElementRef element) = 0;

    /// Replaces the range by the text, and selects the text, unless the user is seen to have gone
    /// on writing beside it. Refused when the range splits a user-perceived character, or lies
    /// outside the element's text.
    virtual QCoro::Task<Replacement> replace(FocusedElementRef element, TextRange range,
                                             QString text) = 0;

    /// Selects the range again just before a paste, so that the paste replaces what was captured.
    /// Does nothing where applications keep their selection.
    virtual QCoro::Task<PasteTarget> select(FocusedElementRef element, TextRange range) = 0;
};

} // namespace quillmender
