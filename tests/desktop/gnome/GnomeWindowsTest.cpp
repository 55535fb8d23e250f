#include "desktop/harness/HarnessError.h"
#include "desktop/harness/TestApplication.h"
#include "desktop/harness/gnome/GnomeDesktopTest.h"

namespace quillmender::harness {
namespace {

class GnomeWindowsTest : public GnomeDesktopTest {};

TEST_F(GnomeWindowsTest, ActivatesAndCloses) {
    auto first = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    const auto second = TestApplication::sampleEditor(desktop(), QStringLiteral("line"));
    WindowList &windows = desktop().windows();
    EXPECT_EQ(windows.active(), second.window());
    EXPECT_EQ(windows.processId(second.window()), second.pid());
    EXPECT_EQ(first.title(), QStringLiteral("Sample editor: plain"));
    EXPECT_EQ(windows.titled(QStringLiteral("Sample editor: line")), second.window());
    EXPECT_EQ(windows.titled(QStringLiteral("Sample editor")), 0U);
    first.activate();
    EXPECT_EQ(windows.active(), first.window());
    windows.close(first.window());
    waitUntil([&] { return !first.process().isRunning(); },
              QStringLiteral("the closed window's program ends"));
    EXPECT_EQ(first.process().exitCode(), 0);
    waitUntil([&] { return !windows.all().contains(first.window()); },
              QStringLiteral("the shell lists it no more"));
}

TEST_F(GnomeWindowsTest, OverviewIsLeftAndTakesTheKeyboardWhileItIsShown) {
    EXPECT_FALSE(desktop().shell().isOverviewShown());
    const auto editor = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    const Accessible text = editor.focusedText();
    desktop().shell().setOverview(true);
    EXPECT_TRUE(desktop().shell().isOverviewShown());
    desktop().shell().setOverview(false);
    waitUntil([&] { return desktop().windows().active() == editor.window(); },
              QStringLiteral("the editor has the focus again"));
    desktop().input().type(QStringLiteral("after"));
    waitUntil([&] { return text.text() == QStringLiteral("after"); },
              QStringLiteral("what is typed arrives"));
}

TEST_F(GnomeWindowsTest, PictureShowsTheWindowWhereItIs) {
    const QImage before = desktop().screenshot();
    ASSERT_FALSE(before.isNull());
    EXPECT_EQ(before.size(), desktop().screen());
    const auto editor = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    waitUntil(
        [&] {
            const QImage now = desktop().screenshot();
            const QPoint middle = editor.geometry().center();
            return now.pixelColor(middle) == QColor(Qt::white) &&
                   before.pixelColor(middle) != QColor(Qt::white);
        },
        QStringLiteral("the window is in the picture"));
}

TEST_F(GnomeWindowsTest, AScaledScreenIsCountedInPixelsOfWindows) {
    GnomeDesktop::Options options;
    options.shell.screen = {1600, 1200};
    options.shell.scale = 2;
    startDesktop(options);
    EXPECT_EQ(desktop().screen(), QSize(800, 600));
    EXPECT_EQ(desktop().screenshot().size(), options.shell.screen);
    const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("one word more"));
    EXPECT_TRUE(QRect(QPoint(), desktop().screen()).contains(editor.geometry().center()));
    const Accessible text = editor.focusedText();
    desktop().input().doubleClick(text.characterExtents(5).center() + editor.geometry().topLeft());
    waitUntil([&] { return text.selectedText() == QStringLiteral("word"); },
              QStringLiteral("the word is selected"));
}

TEST_F(GnomeWindowsTest, WindowsOfXAreManaged) {
    EXPECT_FALSE(desktop().environment().value(QStringLiteral("DISPLAY")).isEmpty());
    const auto terminal = TestApplication::xterm(desktop(), QStringLiteral("of X"));
    EXPECT_EQ(desktop().windows().active(), terminal.window());
}

TEST_F(GnomeWindowsTest, ThereNeedBeNoX) {
    GnomeDesktop::Options options;
    options.shell.xwayland = false;
    startDesktop(options);
    EXPECT_FALSE(desktop().environment().contains(QStringLiteral("DISPLAY")));
}

TEST_F(GnomeWindowsTest, EachEditorShowsItsFocusedText) {
    const QString text = QStringLiteral("some text");
    {
        const auto editor = TestApplication::gnomeTextEditor(desktop(), text);
        EXPECT_EQ(editor.focusedText().text(), text);
    }
    const auto editor = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), text);
    EXPECT_EQ(editor.focusedText().text(), text);
}

TEST_F(GnomeWindowsTest, ProgramWithoutWindowIsAnError) {
    EXPECT_THROW(TestApplication(desktop(), QStringLiteral("true")), HarnessError);
}

} // namespace
} // namespace quillmender::harness
