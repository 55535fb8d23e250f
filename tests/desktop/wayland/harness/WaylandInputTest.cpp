#include "desktop/harness/HarnessError.h"
#include "desktop/harness/TestApplication.h"
#include "desktop/harness/wayland/WaylandDesktopTest.h"

#include <QFile>

#include <X11/keysym.h>

namespace quillmender::harness {
namespace {

class WaylandInputTest : public EachCompositorTest {
  protected:
    WaylandDesktop &startWithLayouts(const QString &layouts) {
        WaylandDesktop::Options options;
        options.compositor.layouts = layouts;
        return startDesktop(options);
    }

    static void waitForText(const Accessible &field, const QString &text) {
        becomesTrue([&] { return field.text() == text; });
        EXPECT_EQ(field.text(), text);
    }
};

TEST_P(WaylandInputTest, KeyboardReachesTheEditor) {
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    const QString typed = QStringLiteral("Hello, World!\n(2nd line)");
    desktop().input().type(typed);
    waitForText(text, typed);
    desktop().input().chord({XK_Control_L, XK_a});
    waitUntil([&] { return text.selectedText() == typed; }, QStringLiteral("all is selected"));
}

TEST_P(WaylandInputTest, KeyboardReachesTheTerminal) {
    const QString file = desktop().folders().home() + QStringLiteral("/typed.txt");
    const TestApplication foot(
        desktop(), QStringLiteral("foot"),
        {QStringLiteral("sh"), QStringLiteral("-c"), QStringLiteral("exec cat >'%1'").arg(file)});
    desktop().input().type(QStringLiteral("Hello, foot\n"));
    QFile typed(file);
    waitUntil([&] { return typed.size() > 0; }, QStringLiteral("the line has come"));
    ASSERT_TRUE(typed.open(QIODevice::ReadOnly));
    EXPECT_EQ(typed.readAll(), "Hello, foot\n");
}

TEST_P(WaylandInputTest, HeldKeyModifiesUntilReleased) {
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    desktop().input().press(XK_Shift_L);
    desktop().input().type(QStringLiteral("a"));
    desktop().input().release(XK_Shift_L);
    desktop().input().type(QStringLiteral("a"));
    waitForText(text, QStringLiteral("Aa"));
}

TEST_P(WaylandInputTest, HeldLetterRepeats) {
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    desktop().input().press(XK_x);
    waitUntil([&] { return text.text().startsWith(QStringLiteral("xxx")); },
              QStringLiteral("the held key repeats"));
    desktop().input().release(XK_x);
}

TEST_P(WaylandInputTest, CapsLockStaysUntilItIsPressedAgain) {
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    desktop().input().chord({XK_Caps_Lock});
    EXPECT_TRUE(desktop().input().capsLock());
    desktop().input().type(QStringLiteral("ab"));
    desktop().input().chord({XK_Caps_Lock});
    EXPECT_FALSE(desktop().input().capsLock());
    desktop().input().type(QStringLiteral("ab"));
    waitForText(text, QStringLiteral("ABab"));
}

TEST_P(WaylandInputTest, TypesOnAGermanKeyboard) {
    startWithLayouts(QStringLiteral("de"));
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    const QString typed = QStringLiteral("zy \u00fc\u00df@Z");
    desktop().input().type(typed);
    waitForText(text, typed);
}

TEST_P(WaylandInputTest, GoesOverFromOneLayoutToTheOther) {
    startWithLayouts(QStringLiteral("us,ru"));
    auto mousepad = TestApplication::mousepad(desktop());
    const Accessible text = mousepad.focusedText();
    desktop().input().type(QStringLiteral("ab "));
    waitForText(text, QStringLiteral("ab "));
    desktop().compositor().useLayout(1);
    desktop().input().type(QStringLiteral("\u0444\u0438"));
    waitForText(text, QStringLiteral("ab \u0444\u0438"));
    EXPECT_THROW(desktop().input().type(QStringLiteral("a")), HarnessError);
}

TEST_P(WaylandInputTest, MouseSelectsAWord) {
    const QString line = QStringLiteral("one longword here");
    auto mousepad = TestApplication::mousepad(desktop(), line);
    if (mousepad.geometry().isEmpty())
        GTEST_SKIP() << "this compositor does not tell where windows are";
    const Accessible text = mousepad.focusedText();
    const QPoint inTheWindow = text.characterExtents(6).center();
    desktop().input().doubleClick(mousepad.geometry().topLeft() + inTheWindow);
    waitUntil([&] { return text.selectedText() == QStringLiteral("longword"); },
              QStringLiteral("the word is selected"));
    EXPECT_EQ(desktop().selectedText(), QStringLiteral("longword"));
}

INSTANTIATE_TEST_SUITE_P(On, WaylandInputTest, everyCompositor(), compositorName);

} // namespace
} // namespace quillmender::harness
