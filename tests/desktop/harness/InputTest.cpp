#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/TestApplication.h"

#include <X11/keysym.h>

namespace quillmender::harness {
namespace {

class InputTest : public DesktopTest {};

TEST_F(InputTest, KeyboardReachesTheEditor) {
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    desktop().input().type(QStringLiteral("Hello, World!\n(2nd line)"));
    waitUntil([&] { return text.text() == QStringLiteral("Hello, World!\n(2nd line)"); },
              QStringLiteral("the typed text is in the editor"));
    desktop().input().chord({XK_Control_L, XK_a});
    waitUntil([&] { return text.selectedText() == QStringLiteral("Hello, World!\n(2nd line)"); },
              QStringLiteral("all is selected"));
}

TEST_F(InputTest, HeldKeyModifiesUntilReleased) {
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    desktop().input().press(XK_Shift_L);
    desktop().input().type(QStringLiteral("a"));
    desktop().input().release(XK_Shift_L);
    desktop().input().type(QStringLiteral("a"));
    waitUntil([&] { return text.text() == QStringLiteral("Aa"); },
              QStringLiteral("the first letter is a capital"));
}

TEST_F(InputTest, MouseSelectsAWord) {
    auto mousepad = TestApplication::mousepad(desktop(), QStringLiteral("one longword here"));
    const Accessible text = mousepad.focusedText();
    desktop().input().doubleClick(text.characterExtents(6).center());
    waitUntil([&] { return text.selectedText() == QStringLiteral("longword"); },
              QStringLiteral("the word is selected"));
}

TEST_F(InputTest, CharacterWithoutKeyIsAnError) {
    EXPECT_THROW(desktop().input().type(QStringLiteral("\u00e9")), HarnessError);
}

} // namespace
} // namespace quillmender::harness
