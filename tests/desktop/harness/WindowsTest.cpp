#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Screenshot.h"
#include "desktop/harness/TestApplication.h"

namespace quillmender::harness {
namespace {

class WindowsTest : public DesktopTest {};

TEST_F(WindowsTest, ActivatesAndCloses) {
    auto first = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    const auto second = TestApplication::sampleEditor(desktop(), QStringLiteral("line"));
    Windows &windows = desktop().windows();
    EXPECT_EQ(windows.active(), second.window());
    EXPECT_EQ(windows.title(first.window()), QStringLiteral("Sample editor: plain"));
    EXPECT_EQ(windows.processId(first.window()), first.pid());
    EXPECT_EQ(windows.titled(QStringLiteral("Sample editor: line")), second.window());
    first.activate();
    EXPECT_EQ(windows.active(), first.window());
    windows.close(first.window());
    waitUntil([&] { return !first.process().isRunning(); },
              QStringLiteral("the closed window's program ends"));
    EXPECT_EQ(first.process().exitCode(), 0);
}

TEST_F(WindowsTest, ScaleReachesTheProgram) {
    startDesktop({.screen = {1600, 1200}, .scale = 2});
    const auto editor = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    EXPECT_EQ(editor.geometry().size(), QSize(960, 480));
    EXPECT_EQ(desktop().screenshot().size(), QSize(1600, 1200));
    EXPECT_EQ(takeScreenshot(desktop().connection(), editor.geometry()).size(), QSize(960, 480));
}

TEST_F(WindowsTest, EachEditorShowsItsFocusedText) {
    const QString text = QStringLiteral("some text");
    {
        const auto editor = TestApplication::gedit(desktop(), text);
        EXPECT_EQ(editor.focusedText().text(), text);
    }
    {
        const auto editor = TestApplication::gnomeTextEditor(desktop(), text);
        EXPECT_EQ(editor.focusedText().text(), text);
    }
    for (const char *kind : {"plain", "line", "password"}) {
        const auto editor =
            TestApplication::sampleEditor(desktop(), QString::fromLatin1(kind), text);
        constexpr uint passwordText = 40;
        EXPECT_EQ(editor.focusedText().role() == passwordText,
                  QLatin1String(kind) == QLatin1String("password"))
            << kind;
    }
}

TEST_F(WindowsTest, TerminalAndBrowserOpen) {
    {
        const auto terminal = TestApplication::xterm(desktop(), QStringLiteral("in a terminal"));
        EXPECT_FALSE(desktop().accessible().application(terminal.pid()).has_value());
    }
    const auto browser = TestApplication::chromium(
        desktop(), QStringLiteral("<textarea autofocus>in a page</textarea>"));
    waitUntil([&] { return browser.title().startsWith(QStringLiteral("Page")); },
              QStringLiteral("the page is open"));
}

TEST_F(WindowsTest, ProgramWithoutWindowIsAnError) {
    EXPECT_THROW(TestApplication(desktop(), QStringLiteral("true")), HarnessError);
    EXPECT_THROW(TestApplication(desktop(), QStringLiteral("/no/such/program")), HarnessError);
}

} // namespace
} // namespace quillmender::harness
