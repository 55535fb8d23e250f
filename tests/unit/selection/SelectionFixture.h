#pragma once

#include "fakes/Await.h"
#include "fakes/FakeChords.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeFocusedText.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/LogLines.h"
#include "model/AppFailure.h"
#include "selection/SelectionController.h"

#include <gtest/gtest.h>

namespace quillmender {

/// A controller on recording fakes that share one log.
class SelectionFixture : public testing::Test {
  protected:
    static QList<PasteboardItem> twoItems() {
        PasteboardItem first;
        first.setData(QStringLiteral("text/plain"), "one", "tag");
        first.setData(QStringLiteral("text/html"), "<b>one</b>");
        PasteboardItem second;
        second.setData(QStringLiteral("image/png"), QByteArray("\x89PNG\0\r\n", 7));
        return {first, second};
    }

    SelectionFixture() { pasteboard.contents = twoItems(); }

    /// Nothing of these that is null is there to be read.
    void setText(const QString &selectedText, const QString &value,
                 std::optional<TextRange> range = std::nullopt) {
        if (!selectedText.isNull())
            focus.reading.selectedText = selectedText;
        else if (!value.isNull())
            focus.reading.value = value;
        focus.reading.selectedRange = range;
    }

    void copyYields(std::optional<QString> text) {
        chords.onTyped = [this, text](Chord chord) {
            if (chord == Chord::copy)
                pasteboard.copyFromElsewhere(text);
        };
    }

    SelectionSessionRef capture() { return fakes::await(controller.captureSelection()); }

    /// Expects the capture to fail and answers with which failure.
    AppFailure::Case captureFailure() {
        try {
            capture();
        } catch (const AppFailure &failure) {
            return failure.failureCase();
        }
        ADD_FAILURE() << "the capture did not fail";
        return AppFailure::Case::invalidResponse;
    }

    SelectionSessionRef session(std::optional<TextRange> range, bool hasElement = true) {
        auto made = std::make_shared<SelectionSession>();
        made->sourceApp = workspace.frontmost;
        if (hasElement)
            made->focusedElement = focus.reading.element;
        made->selectedRange = range;
        made->originalPasteboard = {7, twoItems()};
        return made;
    }

    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeClock clock{log};
    fakes::FakeFocusedText focus{log};
    fakes::FakePasteboard pasteboard{log};
    fakes::FakeChords chords{log};
    fakes::FakeWorkspace workspace{log};
    PasteboardManager manager{pasteboard, chords};
    SelectionController controller{manager, focus, workspace, clock};
};

} // namespace quillmender
