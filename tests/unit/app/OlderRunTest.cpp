#include "CoordinatorFixture.h"

namespace quillmender {
namespace {

const QString offline = QStringLiteral("offline");
const QString typed = QStringLiteral("make this nicer");
// Longer than somebody who types pauses between two words.
const QString typingPause = QStringLiteral("sleep 1000");

/// A run that ends when its session is not the newest any more.
class OlderRunTest : public CoordinatorFixture {
  protected:
    PromptAction action() const { return coordinator->actions().constFirst(); }

    /// The first session's run is under way, and the panel shows the second session.
    void startBoth() {
        startFirst();
        capture(QStringLiteral("second text"));
        second_ = coordinator->currentSession();
    }

    void startFirst() {
        capture(QStringLiteral("first"));
        coordinator->run(action());
    }

    void expectSecondSession() const {
        EXPECT_TRUE(panel->isVisible);
        EXPECT_EQ(coordinator->currentSession(), second_);
        EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("second text"));
        EXPECT_EQ(coordinator->captureDescription(),
                  QStringLiteral("Using only the highlighted text."));
        EXPECT_EQ(coordinator->customInstruction(), typed);
    }

    bool isLogged(const QString &call) const {
        return QTest::qWaitFor([&] { return log->contains(call); });
    }

    const QString shown = QStringLiteral("makeKeyAndOrderFront");
    SelectionSessionRef second_;
};

TEST_F(OlderRunTest, finishesInItsOwnSessionAndLeavesTheNewestAlone) {
    startBoth();
    EXPECT_TRUE(coordinator->isWorking());
    coordinator->setCustomInstruction(typed);
    answerText("1st");
    EXPECT_EQ(value(), QStringLiteral("1std text"));
    EXPECT_FALSE(coordinator->isWorking());
    EXPECT_EQ(coordinator->errorMessage(), std::nullopt);
    EXPECT_FALSE(log->contains(QStringLiteral("orderOut")));
    expectSecondSession();
}

TEST_F(OlderRunTest, saysWhatWentWrongBesideTheNewestSession) {
    startBoth();
    coordinator->setCustomInstruction(typed);
    transport.fail(offline);
    awaitEnd();
    EXPECT_EQ(coordinator->errorMessage(), offline);
    expectSecondSession();
}

TEST_F(OlderRunTest, saysWhatWentWrongDuringACaptureOnceThatIsShown) {
    startFirst();
    fakes::Gate gate;
    accessibility->gate = &gate;
    coordinator->beginWorkflow();
    transport.fail(offline);
    awaitEnd();
    accessibility->gate = nullptr;
    gate.open();
    EXPECT_TRUE(isLogged(shown));
    EXPECT_EQ(coordinator->errorMessage(), offline);
    EXPECT_NE(coordinator->currentSession(), nullptr);
    coordinator->beginWorkflow();
    EXPECT_EQ(coordinator->errorMessage(), std::nullopt);
}

TEST_F(OlderRunTest, leavesAPanelThatSaysWhyNothingWasCaptured) {
    startFirst();
    accessibility->trusted = false;
    coordinator->beginWorkflow();
    const auto said = coordinator->errorMessage();
    ASSERT_TRUE(said.has_value());
    answerText("1st");
    EXPECT_EQ(value(), QStringLiteral("1st"));
    EXPECT_TRUE(panel->isVisible);
    EXPECT_EQ(coordinator->errorMessage(), said);
}

TEST_F(OlderRunTest, doesNotEndTheWorkOfTheNewest) {
    accessibility->refusedAttributes = {QStringLiteral("AXValue")};
    startBoth();
    clock->hold();
    transport.answerText("1st");
    ASSERT_TRUE(isLogged(QStringLiteral("pasteboard.setString 1st")));
    coordinator->run(coordinator->actions().at(1));
    const QString title = coordinator->currentActionTitle();
    clock->release();
    ASSERT_TRUE(isLogged(QStringLiteral("pasteboard.stringWasRead 840")));
    for (int turn = 0; turn < 10; ++turn)
        QCoreApplication::processEvents();
    EXPECT_TRUE(coordinator->isWorking());
    EXPECT_EQ(coordinator->currentActionTitle(), title);
    EXPECT_TRUE(panel->isVisible);
}

/// What is pasted needs the keyboard focus, which the panel has.
class OlderPasteTest : public OlderRunTest {
  protected:
    void SetUp() override { accessibility->refusedAttributes = {QStringLiteral("AXValue")}; }

    /// Of the calls of interest, in their order.
    QStringList calls() const {
        QStringList interesting;
        for (const QString &call : std::as_const(*log)) {
            if (call == typingPause || call == shown || call.startsWith(u"activate") ||
                call.startsWith(u"prepareChord"))
                interesting.append(call);
        }
        return interesting;
    }

    const QString activate = QStringLiteral("activate source options 0");
    const QString paste = QStringLiteral("prepareChord paste");
};

TEST_F(OlderPasteTest, givesThePanelTheKeyboardBack) {
    startBoth();
    answerText("1st");
    EXPECT_EQ(calls(), QStringList({activate, paste, shown}));
    EXPECT_EQ(coordinator->currentSession(), second_);
}

TEST_F(OlderPasteTest, givesThePanelTheKeyboardBackWhenItFails) {
    keyEvents->readiness = ChordReadiness::withheld;
    startBoth();
    answerText("1st");
    EXPECT_EQ(calls(), QStringList({activate, paste, shown}));
    EXPECT_EQ(coordinator->errorMessage(), AppFailure::replacementFailed().errorDescription());
}

TEST_F(OlderPasteTest, waitsWhileTheUserTypes) {
    startBoth();
    coordinator->setCustomInstruction(typed.left(4));
    clock->duringSleep = [this](int sleep) {
        if (sleep == 1)
            coordinator->setCustomInstruction(typed);
    };
    answerText("1st");
    EXPECT_EQ(calls(), QStringList({typingPause, typingPause, activate, paste, shown}));
    expectSecondSession();
}

TEST_F(OlderPasteTest, doesNotWaitForAPanelThatIsClosedMeanwhile) {
    startBoth();
    coordinator->setCustomInstruction(typed);
    clock->duringSleep = [this](int sleep) {
        if (sleep > 1)
            return;
        coordinator->setCustomInstruction(typed + typed);
        coordinator->hidePanel();
    };
    answerText("1st");
    EXPECT_EQ(calls(), QStringList({typingPause, activate, paste}));
    EXPECT_FALSE(panel->isVisible);
}

TEST_F(OlderPasteTest, doesNotShowAgainAPanelThatIsClosedMeanwhile) {
    startBoth();
    clock->duringSleep = [this](int) { coordinator->hidePanel(); };
    answerText("1st");
    EXPECT_EQ(calls(), QStringList({activate, paste}));
    EXPECT_FALSE(panel->isVisible);
}

TEST_F(OlderPasteTest, leavesTheKeyboardToTheApplicationThatHasIt) {
    startBoth();
    coordinator->setCustomInstruction(typed);
    panel->hasKeyboard = false;
    answerText("1st");
    EXPECT_EQ(calls(), QStringList({activate, paste}));
}

TEST_F(OlderPasteTest, doesNotWaitInItsOwnPanel) {
    startFirst();
    coordinator->setCustomInstruction(typed);
    answerText("1st");
    EXPECT_EQ(calls(), QStringList({activate, paste}));
    EXPECT_FALSE(panel->isVisible);
    expectReset();
}

} // namespace
} // namespace quillmender
