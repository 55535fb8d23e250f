#include "desktop/harness/TestApplication.h"
#include "desktop/harness/gnome/GnomeDesktopTest.h"

#include <X11/keysym.h>

namespace quillmender::harness {
namespace {

class GnomeInputTest : public GnomeDesktopTest {};

TEST_F(GnomeInputTest, KeyboardReachesTheEditor) {
    auto editor = TestApplication::mousepad(desktop());
    const Accessible text = editor.focusedText();
    const QString typed = QStringLiteral("Hello, World!\n(2nd line)");
    desktop().input().type(typed);
    becomesTrue([&] { return text.text() == typed; });
    EXPECT_EQ(text.text(), typed);
    desktop().input().chord({XK_Control_L, XK_a});
    waitUntil([&] { return text.selectedText() == typed; }, QStringLiteral("all is selected"));
}

} // namespace
} // namespace quillmender::harness
