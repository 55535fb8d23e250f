#include "desktop/hostile/HostileFixture.h"

#include <QDBusConnectionInterface>

#include <csignal>

namespace quillmender {
namespace {

using harness::waitUntil;

const QString registryName = QStringLiteral("org.a11y.atspi.Registry");

class AccessibilityLossTest : public HostileFixture {
  protected:
    uint registry() {
        return desktop().accessibilityBus()->connection().interface()->servicePid(registryName);
    }
};

TEST_F(AccessibilityLossTest, BusThatFallsSilentIsSaidToBeMissing) {
    start();
    openLetter(Route::accessibility);
    desktop().accessibilityBus()->process().suspend();
    pressHotKey();
    waitForPanel();
    expectClipboardNeverTaken();
    desktop().accessibilityBus()->process().resume();
    waitUntil([&] { return panelShows(QStringLiteral("Request Accessibility Access")); },
              QStringLiteral("the failure is shown"));
    EXPECT_TRUE(provider().requests().empty());

    source().activate();
    pressHotKey();
    waitForPanel(wrong);
}

TEST_F(AccessibilityLossTest, BusThatFallsSilentBeforeTheAnswerChangesNothingUnsaid) {
    start();
    openLetter(Route::accessibility);
    askForAnswer();
    desktop().accessibilityBus()->process().suspend();
    provider().release();
    waitForTemporaryText();
    waitUntilClipboardIsBack();
    desktop().accessibilityBus()->process().resume();
    // GTK itself waits for the bus at each key; then the paste came too late for it.
    const bool isReplaced = isSessionReplaced();
    source().activate();
    waitUntilSourceActs();
    expectText(isReplaced ? mended : letter);
    expectClipboardUntouched();
}

TEST_F(AccessibilityLossTest, KilledRegistryIsStartedAgain) {
    start();
    openLetter(Route::accessibility);
    pressHotKey();
    waitForPanel(wrong);
    const QPoint action = button(QStringLiteral("Fix My Grammar")).extents().center();
    click(QStringLiteral("Close"));
    waitUntilPanelIsGone();
    forgetSource();

    const uint killed = registry();
    ASSERT_NE(killed, 0);
    ::kill(static_cast<pid_t>(killed), SIGKILL);
    waitUntil([&] { return registry() != killed && registry() != 0; },
              QStringLiteral("there is a registry again"));

    // Qt registers with the first registry only: the panel is still there, but not in the list.
    openLetter(Route::accessibility);
    answerWith(right);
    pressHotKey();
    waitForPanel();
    input().click(action);
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    waitUntilPanelIsGone();
    expectText(mended);
    expectClipboardNeverTaken();
}

TEST_F(AccessibilityLossTest, RegistryThatHangsGetsNoKeysToBringLater) {
    start();
    const auto field =
        harness::TestApplication::sampleEditor(desktop(), QStringLiteral("commands"), wrong);
    waitUntil([&] { return desktop().accessible().application(field.pid()).has_value(); },
              QStringLiteral("the application is on the bus"));
    askForAnswer();
    const auto stopped = static_cast<pid_t>(registry());
    ASSERT_NE(stopped, 0);
    ::kill(stopped, SIGSTOP);
    provider().release();
    waitForTemporaryText();
    waitUntilClipboardIsBack();
    ::kill(stopped, SIGCONT);
    EXPECT_FALSE(isSessionReplaced());
    expectClipboardUntouched();
    click(QStringLiteral("Close"));
    waitUntilPanelIsGone();

    // The field has come to this key, and so to all before it.
    waitUntil([&] { return desktop().windows().active() == field.window(); },
              QStringLiteral("the field is in front"));
    input().chord({XK_Control_L, XK_c});
    harness::ClipboardProbe probe(desktop().display());
    waitUntil([&] { return probe.text() == wrong; }, QStringLiteral("the field has copied"));
    EXPECT_EQ(field.title(), wrong);
}

} // namespace
} // namespace quillmender
