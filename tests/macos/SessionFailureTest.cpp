#include "SessionCalls.h"
#include "WholeSessionTest.h"
#include "model/AppFailure.h"

namespace quillmender {

namespace {

using namespace sessionCalls;

constexpr int copyKey = 8;

class SessionFailureTest : public WholeSessionTest {
  protected:
    SessionFailureTest() {
        coordinator->start();
        taken();
    }

    void expectMessage(const AppFailure &failure) const {
        EXPECT_EQ(coordinator->errorMessage(), failure.errorDescription());
    }

    void captureByCopy(const std::string &text) {
        accessibility.focusedError = kAXErrorCannotComplete;
        copyYields(text);
        capture();
        ASSERT_EQ(coordinator->errorMessage(), std::nullopt);
    }
};

} // namespace

TEST_F(SessionFailureTest, WithoutPermissionNothingIsTouched) {
    accessibility.trusted = false;
    EXPECT_EQ(joined(capture()),
              joined(QStringList({QStringLiteral("AXIsProcessTrusted")}) + panelShown()));
    expectMessage(AppFailure::accessibilityPermissionRequired());
}

TEST_F(SessionFailureTest, WithoutFrontmostApplicationNothingIsTouched) {
    applications.frontmost.reset();
    const QStringList calls = capture();
    EXPECT_EQ(joined(calls.first(3)), "AXIsProcessTrusted\n"
                                      "NSWorkspace frontmostApplication\n"
                                      "NSWorkspace frontmostApplication");
    expectMessage(AppFailure::missingFrontmostApplication());
}

TEST_F(SessionFailureTest, NothingCopiedEndsAfterSixPolls) {
    accessibility.focused = nullptr;
    copyYields(std::nullopt);
    QStringList expected = snapshotOfTheUsersOwn() + activation() + chord(copyKey);
    for (int attempt = 0; attempt < 6; ++attempt)
        expected += poll();
    EXPECT_EQ(joined(capture()), joined(expected + restore() + panelShown()));
    expectMessage(AppFailure::noSelectionFound());
    EXPECT_EQ(pasteboard.items, usersOwn);
}

TEST_F(SessionFailureTest, CopiedPictureIsNoText) {
    accessibility.focused = nullptr;
    events.onPost = [this](CGKeyCode, bool keyDown) {
        if (keyDown)
            pasteboard.copyFromElsewhere({{{"public.png", "picture"}}});
    };
    capture();
    expectMessage(AppFailure::noSelectionFound());
    EXPECT_EQ(pasteboard.items, usersOwn);
}

TEST_F(SessionFailureTest, CopyChordThatCannotBeMadeLeavesThePasteboardAlone) {
    accessibility.focused = nullptr;
    events.createsSources = false;
    EXPECT_EQ(joined(capture()),
              joined(snapshotOfTheUsersOwn() + activation() +
                     QStringList({QStringLiteral("CGEventSourceCreate 0")}) + panelShown()));
    expectMessage(AppFailure::replacementFailed());
    EXPECT_EQ(pasteboard.changeCount, 7);
}

TEST_F(SessionFailureTest, PasteChordThatCannotBeMadeRestoresThePasteboard) {
    captureByCopy("text");
    events.createsUp = false;
    const QStringList calls = run("answer");
    EXPECT_EQ(joined(calls.last(2)), joined(restore()));
    expectMessage(AppFailure::replacementFailed());
    EXPECT_TRUE(pasted.empty());
    EXPECT_EQ(pasteboard.items, usersOwn);
}

TEST_F(SessionFailureTest, CancelledPasteRestoresThePasteboard) {
    captureByCopy("text");
    clock->cancelledSleep = clock->sleeps + 1;
    run("answer");
    expectMessage(AppFailure::replacementFailed());
    EXPECT_TRUE(pasted.empty());
    EXPECT_EQ(pasteboard.items, usersOwn);
}

TEST_F(SessionFailureTest, WhatIsCopiedMeanwhileGivesWayToTheSnapshot) {
    captureByCopy("text");
    pasteboard.copyFromElsewhere({{{"public.png", "copied while the panel stood"}}});
    run("answer");
    EXPECT_EQ(pasted, std::vector<std::string>({"answer"}));
    EXPECT_EQ(pasteboard.items, usersOwn);
}

TEST_F(SessionFailureTest, FailedRequestKeepsTheSessionForAnotherAction) {
    select(u"word", 0, 4);
    capture();
    coordinator->run(coordinator->actions().first());
    transport.fail(QStringLiteral("no route"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !coordinator->isWorking(); }));
    EXPECT_EQ(joined(taken()), joined(request()));
    EXPECT_EQ(coordinator->errorMessage(), QStringLiteral("no route"));
    run("sentence");
    EXPECT_EQ(value(), "sentence");
    EXPECT_EQ(coordinator->errorMessage(), std::nullopt);
}

TEST_F(SessionFailureTest, MissingKeySendsNothing) {
    keychain.items.clear();
    select(u"word", 0, 4);
    capture();
    coordinator->run(coordinator->actions().first());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !coordinator->isWorking(); }));
    EXPECT_TRUE(transport.requests.isEmpty());
    expectMessage(AppFailure::missingAPIKey(AIProvider::openAI));
}

TEST_F(SessionFailureTest, HotKeyThatIsTakenLeavesTheMenu) {
    dispatcher.registerStatus = -9878;
    coordinator->start();
    select(u"word", 0, 4);
    coordinator->beginWorkflow();
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("word"));
}

} // namespace quillmender
