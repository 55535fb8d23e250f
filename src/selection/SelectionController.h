#pragma once

#include "model/SelectionSession.h"
#include "platform/Clock.h"
#include "platform/FocusedText.h"
#include "platform/Workspace.h"
#include "selection/PasteboardLease.h"
#include "selection/PasteboardManager.h"

#include <QCoroTask>

#include <functional>
#include <memory>
#include <optional>

namespace quillmender {

/// Reads the text that the user is working on in the application in front, and later writes the
/// answer in its place. Operations that borrow the pasteboard take turns. Main thread only.
class SelectionController {
  public:
    SelectionController(PasteboardManager &pasteboardManager, FocusedText &focusedText,
                        Workspace &workspace, Clock &clock);

    /// Takes windows of our own out of the way of the application that something is typed into.
    /// They come back when what it answers goes; null where none is in the way.
    using MakeWay = std::function<std::shared_ptr<void>()>;

    /// The selected text, else the whole focused field, else what a copy chord yields, for which
    /// alone `makeWay` is called. The pasteboard is afterwards as it was. Throws AppFailure, or
    /// CancellationError from a sleep and when a later capture has begun before this one came to
    /// the copy chord.
    QCoro::Task<SelectionSessionRef> captureSelection(MakeWay makeWay = {});

    /// Replaces the captured text in the focused element and selects what it wrote. False, with
    /// nothing changed, when this route cannot be used. Throws UncertainReplacement.
    QCoro::Task<bool> replaceViaAccessibility(SelectionSessionRef session, QString replacement);

    /// Pastes the text into the source application and restores the pasteboard of the capture.
    /// Throws AppFailure `replacementFailed`, with the pasteboard restored.
    QCoro::Task<> performPasteReplacement(SelectionSessionRef session, QString replacement);

  private:
    using NewSession = std::shared_ptr<SelectionSession>;

    QCoro::Task<> snapshotPasteboard(NewSession session);
    QCoro::Task<QString> copySelection(NewSession session, bool isFocusElsewhere, MakeWay makeWay);
    QCoro::Task<QString> copiedText(qint64 changeCount);
    QCoro::Task<bool> waitForPasteboardChange(qint64 changeCount);
    QCoro::Task<bool> selectWhatGoes(SelectionSessionRef session);
    QCoro::Task<bool> paste(SelectionSessionRef session, QString replacement);

    PasteboardManager &pasteboardManager_;
    FocusedText &focusedText_;
    Workspace &workspace_;
    Clock &clock_;
    PasteboardLease lease_;
    quint64 latestCapture_ = 0;
};

} // namespace quillmender
