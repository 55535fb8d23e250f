#pragma once

#include "DoublesTest.h"
#include "doubles/accessibility/AccessibilityServer.h"
#include "doubles/accessibility/Element.h"
#include "doubles/accessibility/PackedValue.h"
#include "doubles/cf/String.h"
#include "fakes/Await.h"
#include "platform/macos/MacFocusedText.h"

namespace quillmender {

/// The focused text on a system where one element, "editor", has the focus. It is of process 7, as
/// is the application in front.
class FocusedTextTest : public DoublesTest {
  protected:
    struct Process : RunningApplication {
        explicit Process(qint64 own) : id(own) {}
        qint64 processId() const override { return id; }
        qint64 id;
    };

    FocusedTextTest() {
        server.focused = editor->ref();
        calls();
    }
    ~FocusedTextTest() override { CFRelease(editor->ref()); }

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

    std::string value() const { return doubles::describe(editor->value("AXValue")); }

    FocusReading read() { return fakes::await(focusedText.read(application)); }

    /// The editor's element; what it took to find it is left out of the calls.
    FocusedElementRef focused() {
        const FocusReading reading = read();
        calls();
        return reading.element;
    }

    doubles::AccessibilityServer server;
    doubles::Element *editor = new doubles::Element("editor");
    RunningApplicationRef application = std::make_shared<const Process>(7);
    MacFocusedText focusedText;
};

} // namespace quillmender
