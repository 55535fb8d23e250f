#pragma once

#include "fakes/Await.h"
#include "fakes/FakeAccessibility.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeKeyEvents.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeWorkspace.h"
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

    void setText(const QString &selectedText, const QString &value,
                 std::optional<TextRange> range = std::nullopt) {
        if (!selectedText.isNull())
            accessibility.attributes[QStringLiteral("AXSelectedText")] = selectedText;
        if (!value.isNull())
            accessibility.attributes[QStringLiteral("AXValue")] = value;
        if (range)
            accessibility.attributes[QStringLiteral("AXSelectedTextRange")] = *range;
    }

    void copyYields(std::optional<QString> text) {
        keyEvents.onPost = [this, text](quint16) {
            if (pasteboard.text != text)
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
            made->focusedElement = std::make_shared<const AccessibilityElement>();
        made->selectedRange = range;
        made->originalPasteboard = {7, twoItems()};
        return made;
    }

    QString value() {
        return std::get<QString>(accessibility.attributes.value(QStringLiteral("AXValue")));
    }

    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeClock clock{log};
    fakes::FakeAccessibility accessibility{log};
    fakes::FakePasteboard pasteboard{log};
    fakes::FakeKeyEvents keyEvents{log};
    fakes::FakeWorkspace workspace{log};
    PasteboardManager manager{pasteboard, keyEvents};
    SelectionController controller{manager, accessibility, workspace, clock};
};

} // namespace quillmender
