#pragma once

#include "model/PasteboardSnapshot.h"
#include "platform/FocusedText.h"

#include <QString>

#include <memory>
#include <optional>

namespace quillmender {

/// What the captured text covers.
enum class CaptureScope {
    selection, ///< only what the user had selected
    fullField, ///< the whole text field, because nothing usable was selected
};

/// How the captured text was obtained.
enum class SelectionAcquisitionMethod {
    accessibility, ///< read from the focused element
    clipboard,     ///< copied by the application itself
};

/// One capture: all that it takes to put another text back where this one came from.
struct SelectionSession {
    RunningApplicationRef sourceApp;        ///< never null
    FocusedElementRef focusedElement;       ///< null when none was reported, or one of another app
    std::optional<TextRange> selectedRange; ///< of the captured text in the element's value
    QString selectedText;
    PasteboardSnapshot originalPasteboard; ///< as it was before the capture began
    SelectionAcquisitionMethod acquisitionMethod = SelectionAcquisitionMethod::accessibility;
    CaptureScope captureScope = CaptureScope::selection;
    ChordContextRef chordContext; ///< for the chords of this session; null when nothing is known
};

/// Shared by all who work on the capture; none of them changes it.
using SelectionSessionRef = std::shared_ptr<const SelectionSession>;

} // namespace quillmender
