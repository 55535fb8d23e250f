#pragma once

#include "DoublesTest.h"
#include "doubles/accessibility/AccessibilityServer.h"
#include "doubles/accessibility/Element.h"
#include "doubles/accessibility/PackedValue.h"
#include "doubles/cf/Dictionary.h"
#include "doubles/cf/String.h"
#include "fakes/Await.h"
#include "platform/macos/MacAccessibility.h"

namespace quillmender {

/// The macOS accessibility on a system with one focused element, "editor".
class AccessibilityTest : public DoublesTest {
  protected:
    AccessibilityTest() {
        server.focused = editor->ref();
        calls();
    }
    ~AccessibilityTest() override { CFRelease(editor->ref()); }

    AccessibilityElementRef focused() {
        const auto result = copy(accessibility.createSystemWide(), attribute::focusedElement);
        EXPECT_EQ(result.error, AccessibilityError::success);
        calls();
        return std::get<AccessibilityElementRef>(result.value);
    }

    AttributeResult copy(const AccessibilityElementRef &element, const char *name) {
        return fakes::await(accessibility.copyAttributeValue(element, QLatin1String(name)));
    }

    AccessibilityError set(const AccessibilityElementRef &element, const char *name,
                           const AccessibilityValue &value) {
        return fakes::await(accessibility.setAttributeValue(element, QLatin1String(name), value));
    }

    doubles::AccessibilityServer server;
    doubles::Element *editor = new doubles::Element("editor");
    MacAccessibility accessibility;
};

} // namespace quillmender
