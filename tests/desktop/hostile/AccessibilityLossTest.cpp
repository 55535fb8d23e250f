#include "desktop/hostile/HostileFixture.h"

#include <QDBusConnectionInterface>

#include <csignal>

namespace quillmender {
namespace {

using harness::waitUntil;

const QString registryName = QStringLiteral("org.a11y.atspi.Registry");

class AccessibilityLossTest : public HostileFixture {};

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

TEST_F(AccessibilityLossTest, BusThatFallsSilentBeforeTheAnswerCostsATimeOut) {
    start();
    openLetter(Route::accessibility);
    askForAnswer();
    desktop().accessibilityBus()->process().suspend();
    provider().release();
    // The chord needs no accessibility: the word is still selected.
    waitUntilPanelIsGone();
    expectClipboardUntouched();
    desktop().accessibilityBus()->process().resume();
    expectText(mended);
}

TEST_F(AccessibilityLossTest, KilledRegistryIsStartedAgain) {
    start();
    const QDBusConnectionInterface *bus = desktop().accessibilityBus()->connection().interface();
    const auto registry = [&] { return bus->servicePid(registryName).value(); };
    const uint killed = registry();
    ASSERT_NE(killed, 0);
    ::kill(static_cast<pid_t>(killed), SIGKILL);
    waitUntil([&] { return registry() != killed && registry() != 0; },
              QStringLiteral("there is a registry again"));

    openLetter(Route::accessibility);
    pressHotKey();
    waitForPanel(wrong);
    answerWith(right);
    click(QStringLiteral("Fix My Grammar"));
    waitUntilPanelIsGone();
    expectText(mended);
    expectClipboardNeverTaken();
}

} // namespace
} // namespace quillmender
