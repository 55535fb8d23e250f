#include "desktop/harness/TestApplication.h"
#include "desktop/harness/gnome/GnomeDesktopTest.h"

#include <X11/keysym.h>

namespace quillmender::harness {
namespace {

class GnomeInputTest : public GnomeDesktopTest {
  protected:
    GnomeDesktop &startWithLayouts(const QString &layouts) {
        GnomeDesktop::Options options;
        options.shell.layouts = layouts;
        return startDesktop(options);
    }

    static void waitForText(const Accessible &field, const QString &text) {
        becomesTrue([&] { return field.text() == text; });
        EXPECT_EQ(field.text(), text);
    }
};

TEST_F(GnomeInputTest, KeyboardReachesTheEditor) {
    auto editor = TestApplication::mousepad(desktop());
    const Accessible text = editor.focusedText();
    const QString typed = QStringLiteral("Hello, World!\n(2nd line)");
    desktop().input().type(typed);
    waitForText(text, typed);
    desktop().input().chord({XK_Control_L, XK_a});
    waitUntil([&] { return text.selectedText() == typed; }, QStringLiteral("all is selected"));
}

TEST_F(GnomeInputTest, HeldKeyModifiesUntilReleased) {
    auto editor = TestApplication::mousepad(desktop());
    const Accessible text = editor.focusedText();
    desktop().input().press(XK_Shift_L);
    desktop().input().type(QStringLiteral("a"));
    desktop().input().release(XK_Shift_L);
    desktop().input().type(QStringLiteral("a"));
    waitForText(text, QStringLiteral("Aa"));
}

TEST_F(GnomeInputTest, HeldLetterRepeats) {
    auto editor = TestApplication::mousepad(desktop());
    const Accessible text = editor.focusedText();
    desktop().input().press(XK_a);
    waitUntil([&] { return text.text().size() >= 5; }, QStringLiteral("the letter repeats"));
    desktop().input().release(XK_a);
}

TEST_F(GnomeInputTest, LayoutsAreTheUsers) {
    startWithLayouts(QStringLiteral("de,ru"));
    auto editor = TestApplication::mousepad(desktop());
    const Accessible text = editor.focusedText();
    desktop().input().type(QStringLiteral("zähl @"));
    waitForText(text, QStringLiteral("zähl @"));
    desktop().input().useLayout(1);
    desktop().input().type(QStringLiteral("да"));
    waitForText(text, QStringLiteral("zähl @да"));
}

TEST_F(GnomeInputTest, PointerClicksWhereItIsSentTo) {
    const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("one word more"));
    const Accessible text = editor.focusedText();
    const QPoint word = text.characterExtents(5).center() + editor.geometry().topLeft();
    desktop().input().doubleClick(word);
    waitUntil([&] { return text.selectedText() == QStringLiteral("word"); },
              QStringLiteral("the word is selected"));
    // Elsewhere, since a third click on the word would be one more of the same row.
    desktop().input().click(word + QPoint(100, 100));
    waitUntil([&] { return text.selectedText().isEmpty(); },
              QStringLiteral("a single click selects nothing"));
}

} // namespace
} // namespace quillmender::harness
