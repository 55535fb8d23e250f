#include "SessionCalls.h"
#include "WholeSessionTest.h"
#include "doubles/appkit/StatusArea.h"
#include "doubles/foundation/Bundle.h"
#include "platform/Process.h"

namespace quillmender {

namespace {

using namespace sessionCalls;

class SessionRoadTest : public WholeSessionTest {
  protected:
    SessionRoadTest() { taken(); }

    /// From here on the program is as after its launch.
    void start() {
        coordinator->start();
        taken();
    }
};

} // namespace

TEST_F(SessionRoadTest, EveryServiceIsMade) {
    EXPECT_TRUE(platform->instance && platform->userDefaults && platform->secrets &&
                platform->loginItem && platform->workspace && platform->accessibilityAccess &&
                platform->focusedText && platform->pasteboard && platform->chords &&
                platform->hotKeys && platform->statusItem && platform->ownWindows &&
                platform->symbols && platform->appearance);
    EXPECT_EQ(platform->instance->claim([](const QString &) {}).outcome,
              InstanceClaim::Outcome::held);
    EXPECT_EQ(platform->bundleVersion, std::nullopt);
    doubles::Bundle::shared().shortVersion = "3.1";
    EXPECT_EQ(makePlatform()->bundleVersion, QStringLiteral("3.1"));
}

TEST_F(SessionRoadTest, TheToolkitLeavesTheFrontAlone) {
    qunsetenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM");
    prepareProcess();
    EXPECT_FALSE(qEnvironmentVariableIsEmpty("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM"));
}

TEST_F(SessionRoadTest, TheLaunchShowsTheStatusItemAndThenRegistersTheHotKey) {
    platform->ownWindows->setAccessoryPolicy();
    coordinator->start();
    const QStringList calls = taken();
    ASSERT_EQ(calls.size(), 6) << joined(calls);
    EXPECT_EQ(joined(calls.first(4)), "NSApplication setActivationPolicy 1\n"
                                      "NSStatusBar statusItemWithLength -1\n"
                                      "NSImage imageWithSystemSymbolName text.quote Quillmender\n"
                                      "NSStatusItem setMenu 5");
    EXPECT_TRUE(calls[4].startsWith(QStringLiteral("InstallEventHandler")));
    EXPECT_TRUE(calls[5].startsWith(QStringLiteral("RegisterEventHotKey")));
}

TEST_F(SessionRoadTest, ASelectionIsReadAndWrittenBackThroughAccessibility) {
    start();
    select(u"one word here", 4, 4);
    EXPECT_EQ(joined(capture()),
              joined(snapshotOfTheUsersOwn() + search() + examination() +
                     read(QStringLiteral("AXSelectedText")) +
                     read(QStringLiteral("AXSelectedTextRange")) + panelShown()));
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("word"));

    EXPECT_EQ(joined(run("sentence")),
              joined(request() + read(QStringLiteral("AXValue")) +
                     QStringList({QStringLiteral("AXUIElementSetAttributeValue editor AXValue one "
                                                 "sentence here"),
                                  QStringLiteral("AXUIElementSetAttributeValue editor "
                                                 "AXSelectedTextRange 4+8 of type 4")}) +
                     panelHidden()));
    EXPECT_EQ(value(), "one sentence here");
    EXPECT_EQ(pasteboard.items, usersOwn);
    EXPECT_EQ(pasteboard.changeCount, 7) << "the pasteboard was not touched";
}

// Begun in the menu, from behind the panel of an earlier session.
TEST_F(SessionRoadTest, WithoutAnElementTheTextIsCopiedAndTheAnswerPasted) {
    start();
    applications.bringToFront(editorProcess);
    applications.bringToFront(doubles::RunningApplications::own);
    accessibility.focusedError = kAXErrorCannotComplete;
    copyYields("  copied text ");
    EXPECT_EQ(joined(capture([] { EXPECT_TRUE(doubles::StatusArea::shared().choose(0)); })),
              joined(snapshotOfTheUsersOwn() + search() + activation() + chord(copyKey) + poll() +
                     copiedString() + restore() + panelShown()));
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("copied text"));
    EXPECT_EQ(pasteboard.items, usersOwn) << "the copied text does not stay";

    EXPECT_EQ(joined(run("answer")),
              joined(request() + answerOnThePasteboard(QStringLiteral("answer")) + activation() +
                     chord(pasteKey) + QStringList({QStringLiteral("sleep 160")}) + restore() +
                     panelHidden()));
    EXPECT_EQ(pasted, std::vector<std::string>({"answer"}));
    EXPECT_EQ(pasteboard.items, usersOwn);
}

} // namespace quillmender
