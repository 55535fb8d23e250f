#include "desktop/harness/HarnessError.h"
#include "desktop/harness/TestApplication.h"
#include "desktop/harness/wayland/WaylandDesktopTest.h"

#include <QSet>

namespace quillmender::harness {
namespace {

class WaylandWindowsTest : public EachCompositorTest {
  protected:
    static int countColors(const QImage &picture) {
        QSet<QRgb> colors;
        for (int y = 0; y < picture.height(); y += 3) {
            for (int x = 0; x < picture.width(); x += 3)
                colors.insert(picture.pixel(x, y));
        }
        return static_cast<int>(colors.size());
    }
};

TEST_P(WaylandWindowsTest, ActivatesAndCloses) {
    auto first = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    const auto second = TestApplication::sampleEditor(desktop(), QStringLiteral("line"));
    WindowList &windows = desktop().windows();
    EXPECT_EQ(windows.active(), second.window());
    EXPECT_EQ(first.title(), QStringLiteral("Sample editor: plain"));
    EXPECT_EQ(windows.titled(QStringLiteral("Sample editor: line")), second.window());
    EXPECT_EQ(windows.titled(QStringLiteral("Sample editor")), 0U);
    first.activate();
    EXPECT_EQ(windows.active(), first.window());
    windows.close(first.window());
    waitUntil([&] { return !first.process().isRunning(); },
              QStringLiteral("the closed window's program ends"));
    EXPECT_EQ(first.process().exitCode(), 0);
    EXPECT_FALSE(windows.all().contains(first.window()));
}

TEST_P(WaylandWindowsTest, PictureOfTheScreenShowsTheWindow) {
    const QImage before = desktop().screenshot();
    ASSERT_FALSE(before.isNull());
    EXPECT_EQ(before.size(), desktop().compositor().screen());
    auto mousepad = TestApplication::mousepad(desktop(), QStringLiteral("some text"));
    // The menu's and the text's letters have many shades.
    constexpr int shadesOfLetters = 20;
    waitUntil(
        [&] { return countColors(desktop().screenshot()) > countColors(before) + shadesOfLetters; },
        QStringLiteral("the window is in the picture"));
}

TEST_P(WaylandWindowsTest, EachEditorShowsItsFocusedText) {
    const QString text = QStringLiteral("some text");
    {
        const auto editor = TestApplication::gnomeTextEditor(desktop(), text);
        EXPECT_EQ(editor.focusedText().text(), text);
    }
    const auto editor = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), text);
    EXPECT_EQ(editor.focusedText().text(), text);
}

TEST_P(WaylandWindowsTest, ReadsItsConfigurationAgainAndGoesOn) {
    const auto editor = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
    desktop().compositor().reload();
    const Accessible text = editor.focusedText();
    desktop().input().type(QStringLiteral("after"));
    waitUntil([&] { return text.text() == QStringLiteral("after"); },
              QStringLiteral("what is typed arrives"));
}

TEST_P(WaylandWindowsTest, ProgramWithoutWindowIsAnError) {
    EXPECT_THROW(TestApplication(desktop(), QStringLiteral("true")), HarnessError);
}

INSTANTIATE_TEST_SUITE_P(On, WaylandWindowsTest, everyCompositor(), compositorName);

} // namespace
} // namespace quillmender::harness
