#pragma once

#include "AccessibilityTest.h"
#include "doubles/events/EventServer.h"
#include "fakes/FakeClock.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeWorkspace.h"
#include "model/AppFailure.h"
#include "platform/macos/MacKeyEvents.h"
#include "selection/SelectionController.h"

namespace quillmender {

/// Capture and write-back with the macOS accessibility and key events. `log` has the calls of the
/// frameworks and those of the fakes in their order.
class SelectionTest : public AccessibilityTest {
  protected:
    SelectionTest() {
        doubles::CallLog::shared().onCall = [log = log](const std::string &call) {
            log->append(QString::fromStdString(call));
        };
        PasteboardItem item;
        item.setData(QStringLiteral("text/plain"), "the user's own");
        pasteboard.contents = {item};
    }
    ~SelectionTest() override { doubles::CallLog::shared().onCall = nullptr; }

    /// The editor's text; a part of it is selected if `range` is there.
    void setText(const std::u16string &text, std::optional<CFRange> range = std::nullopt) {
        editor->give("AXValue", doubles::makeString(text));
        if (!range)
            return;
        editor->give("AXSelectedText",
                     doubles::makeString(text.substr(static_cast<size_t>(range->location),
                                                     static_cast<size_t>(range->length))));
        editor->give("AXSelectedTextRange", doubles::makeRange(range->location, range->length));
    }

    /// What the application puts on the pasteboard when Command-C comes down.
    void copyYields(const QString &text) {
        events.onPost = [this, text](CGKeyCode keyCode, bool keyDown) {
            if (keyCode == keycode::c && keyDown)
                pasteboard.copyFromElsewhere(text);
        };
    }

    SelectionSessionRef capture() { return fakes::await(controller.captureSelection()); }

    std::string value() const { return doubles::describe(editor->value("AXValue")); }

    /// Which failure the action ends with.
    template <typename Action> AppFailure::Case failureOf(Action action) {
        try {
            action();
        } catch (const AppFailure &failure) {
            return failure.failureCase();
        }
        ADD_FAILURE() << "it did not fail";
        return AppFailure::Case::invalidResponse;
    }

    fakes::CallLog log = fakes::makeCallLog();
    doubles::EventServer events;
    fakes::FakeClock clock{log};
    fakes::FakePasteboard pasteboard{log};
    fakes::FakeWorkspace workspace{log};
    MacKeyEvents keyEvents;
    PasteboardManager manager{pasteboard, keyEvents};
    SelectionController controller{manager, accessibility, workspace, clock};
};

} // namespace quillmender
