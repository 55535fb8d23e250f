#include "SessionCalls.h"
#include "WholeSessionTest.h"
#include "doubles/appkit/StatusArea.h"
#include "doubles/foundation/Bundle.h"

namespace quillmender {

namespace {

using namespace sessionCalls;

constexpr int copyKey = 8;
constexpr int pasteKey = 9;

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
    EXPECT_TRUE(platform->instance && platform->userDefaults && platform->secretItems &&
                platform->loginItem && platform->workspace && platform->accessibility &&
                platform->pasteboard && platform->chords && platform->hotKeys &&
                platform->presence);
    EXPECT_EQ(platform->instance->claim([](const QString &) {}).outcome,
              InstanceClaim::Outcome::held);
    EXPECT_EQ(platform->bundleVersion, std::nullopt);
    doubles::Bundle::shared().shortVersion = "3.1";
    EXPECT_EQ(makePlatform()->bundleVersion, QStringLiteral("3.1"));
}

TEST_F(SessionRoadTest, LaunchShowsTheStatusItemAndThenRegistersTheHotKey) {
    platform->presence->setAccessoryPolicy();
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

TEST_F(SessionRoadTest, StatusMenuIsAsDescribed) {
    start();
    const auto &area = doubles::StatusArea::shared();
    EXPECT_EQ(area.toolTip(), "Quillmender");
    QStringList seen;
    for (const auto &item : area.menu())
        seen.append(
            QStringLiteral("%1|%2|%3|%4")
                .arg(QString::fromStdString(item.title), QString::fromStdString(item.keyEquivalent))
                .arg(item.modifiers, 0, 16)
                .arg(item.hidden));
    EXPECT_EQ(joined(seen), "Transform| |c0000|0\n"
                            "Settings|,|100000|0\n"
                            "Download Latest Version||0|1\n"
                            "About||0|0\n"
                            "Quit Quillmender|q|100000|0");
    for (const int index : {1, 3, 4})
        EXPECT_TRUE(area.choose(index));
    EXPECT_EQ(joined(taken()), "show settings\nshow about\nterminate");
}

TEST_F(SessionRoadTest, NewerReleaseIsOfferedInTheMenu) {
    start();
    const auto &area = doubles::StatusArea::shared();
    releases.answer(200, R"({"version":"2.0","download_url":"https://releases.test/get"})");
    EXPECT_TRUE(QTest::qWaitFor([this] { return answerAlert != nullptr; }));
    EXPECT_EQ(joined(taken()), "show alert Quillmender 2.0 is available");
    EXPECT_EQ(area.menu()[2].title, "Download Quillmender 2.0");
    EXPECT_FALSE(area.menu()[2].hidden);
    EXPECT_TRUE(area.choose(2));
    answerAlert(0);
    EXPECT_EQ(joined(taken()), "NSWorkspace openURL https://releases.test/get\n"
                               "NSWorkspace openURL https://releases.test/get");
}

TEST_F(SessionRoadTest, SelectionIsReadAndWrittenBackThroughAccessibility) {
    start();
    select(u"one word here", 4, 4);
    EXPECT_EQ(joined(capture()),
              joined(snapshotOfTheUsersOwn() + examination() +
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

TEST_F(SessionRoadTest, MenuDoesWhatTheHotKeyDoes) {
    start();
    select(u"word", 0, 4);
    EXPECT_TRUE(doubles::StatusArea::shared().choose(0));
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return log->contains(QStringLiteral("panel makeKeyAndOrderFront")); }));
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("word"));
}

TEST_F(SessionRoadTest, WithoutElementTheTextIsCopiedAndTheAnswerPasted) {
    start();
    accessibility.focusedError = kAXErrorCannotComplete;
    copyYields("  copied text ");
    EXPECT_EQ(joined(capture()), joined(snapshotOfTheUsersOwn() + activation() + chord(copyKey) +
                                        poll() + copiedString() + restore() + panelShown()));
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("copied text"));
    EXPECT_EQ(pasteboard.items, usersOwn) << "the copied text does not stay";

    EXPECT_EQ(joined(run("answer")),
              joined(request() + answerOnThePasteboard(QStringLiteral("answer")) + activation() +
                     chord(pasteKey) + QStringList({QStringLiteral("sleep 160")}) + restore() +
                     panelHidden()));
    EXPECT_EQ(pasted, std::vector<std::string>({"answer"}));
    EXPECT_EQ(pasteboard.items, usersOwn);
}

TEST_F(SessionRoadTest, CopiedTextOfAKnownRangeIsNotPasted) {
    start();
    editor->give("AXSelectedTextRange", doubles::makeRange(3, 3));
    copyYields("word");
    capture();
    editor->give("AXValue", doubles::makeString(u"one   here"));
    run("two");
    EXPECT_EQ(value(), "onetwohere");
    EXPECT_TRUE(pasted.empty());
}

TEST_F(SessionRoadTest, RefusedWriteIsPasted) {
    start();
    select(u"one word here", 4, 4);
    editor->failWriting("AXValue", kAXErrorCannotComplete);
    copyYields(std::nullopt);
    capture();
    run("answer");
    EXPECT_EQ(pasted, std::vector<std::string>({"answer"}));
    EXPECT_EQ(value(), "one word here");
    EXPECT_EQ(pasteboard.items, usersOwn);
    EXPECT_EQ(coordinator->errorMessage(), std::nullopt);
}

TEST_F(SessionRoadTest, CaptureFromThePanelIsFromTheApplicationBehindIt) {
    start();
    accessibility.focusedError = kAXErrorCannotComplete;
    copyYields("first");
    capture();
    applications.bringToFront(doubles::RunningApplications::own);
    copyYields("second");
    taken();
    coordinator->beginWorkflow();
    const QStringList again = taken();
    EXPECT_TRUE(again.contains(QStringLiteral("NSRunningApplication 7 activateWithOptions 0")))
        << joined(again);
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("second"));
}

} // namespace quillmender
