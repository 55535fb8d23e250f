#include "desktop/sessions/KeyRecorder.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/TextKeys.h"

namespace quillmender {
namespace {

using harness::Desktop;
using harness::TestApplication;

const QString message = QStringLiteral(
    "Quillmender needs Accessibility access to read and replace selected text across apps.");
const QString wrong = QStringLiteral("recieve");
const QString letter = QStringLiteral("Hello, you recieve it.");

class PermissionSessionTest : public SessionFixture {
  protected:
    void startWithoutPermission() {
        Desktop::Options options;
        options.accessibilityEnabled = false;
        startDesktop(options);
        // The test reads the panel on the bus where applications are not.
        startProgram({{QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1")}});
    }
};

TEST_F(PermissionSessionTest, NoKeyIsSentAndTheMessageShown) {
    startWithoutPermission();
    KeyRecorder application(desktop());
    pressHotKey();
    waitForPanel(message);
    EXPECT_TRUE(panelShows(QStringLiteral("No text captured yet.")));
    EXPECT_EQ(application.presses(), QStringList());
    EXPECT_FALSE(desktop().accessibilityBus()->isEnabled());
    EXPECT_EQ(clipboardReads(), 0);
    expectClipboardNeverTaken();
}

TEST_F(PermissionSessionTest, RequestGrantsAndTheSessionGoesOn) {
    startWithoutPermission();
    const auto editor = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), letter);
    selectByKeyboard(input(), letter, wrong);
    waitUntilSelected(wrong);
    answerWith(QStringLiteral("receive"));
    pressHotKey();
    waitForPanel(message);
    expectClipboardNeverTaken();

    click(QStringLiteral("Request Accessibility Access"));
    waitForPanel(wrong);
    EXPECT_TRUE(desktop().accessibilityBus()->isEnabled());
    EXPECT_FALSE(panelShows(message));
    click(QStringLiteral("Fix My Grammar"));
    waitUntilPanelIsGone();
    expectClipboardUntouched();
    expectTextByCopying(QStringLiteral("Hello, you receive it."));
}

TEST_F(PermissionSessionTest, WithoutAnyAccessibilityBus) {
    Desktop::Options options;
    options.accessibilityBus = false;
    startDesktop(options);
    startProgram();
    KeyRecorder application(desktop());
    pressHotKey();
    waitForPanel();
    EXPECT_EQ(application.presses(), QStringList());
    EXPECT_EQ(clipboardReads(), 0);

    // Reachable by the keyboard, and of no avail here: the panel stays.
    input().chord({XK_Tab});
    input().chord({XK_Return});
    waitForPanel();
    EXPECT_EQ(application.presses(), QStringList());
    EXPECT_TRUE(provider().requests().empty());
    expectClipboardNeverTaken();
}

} // namespace
} // namespace quillmender
