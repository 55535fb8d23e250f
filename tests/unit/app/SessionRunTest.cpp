#include "CoordinatorFixture.h"

namespace quillmender {
namespace {

class SessionRunTest : public CoordinatorFixture {
  protected:
    PromptAction action(TextAction which) const {
        return PromptAction::builtIn(starterActions().at(static_cast<int>(which)));
    }
    const QString noSelection = QStringLiteral(
        "Select some text, or place the cursor inside a normal text field so Quillmender can "
        "capture the whole field when possible.");
};

TEST_F(SessionRunTest, NeedsASession) {
    coordinator->run(action(TextAction::casual));
    EXPECT_EQ(coordinator->errorMessage(), noSelection);
    coordinator->setCustomInstruction(QStringLiteral("write"));
    coordinator->runCustomInstruction();
    EXPECT_EQ(coordinator->errorMessage(), noSelection);
    EXPECT_TRUE(log->isEmpty());
}

TEST_F(SessionRunTest, SendsTheRenderedPromptAndReplacesTheText) {
    capture(QStringLiteral("me goes"));
    coordinator->run(action(TextAction::fixGrammar));
    EXPECT_TRUE(coordinator->isWorking());
    EXPECT_EQ(coordinator->currentActionTitle(), QStringLiteral("Fix My Grammar"));
    ASSERT_EQ(transport.requests.size(), 1);
    EXPECT_TRUE(transport.requests.first().body.contains("Text:\\nme goes"));
    log->clear();

    answerText("I go");
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("focus.replace 0+7 I go"),
                        QStringLiteral("orderOut"),
                    }));
    EXPECT_FALSE(coordinator->isWorking());
    expectReset();
    EXPECT_EQ(written(), QStringLiteral("I go"));
}

TEST_F(SessionRunTest, PastesWhenAccessibilityRefuses) {
    capture(QStringLiteral("me goes"));
    focus->replacement.outcome = Replacement::Outcome::refused;
    coordinator->run(action(TextAction::fixGrammar));
    answerText("I go");
    EXPECT_LT(log->indexOf(QStringLiteral("focus.replace 0+7 I go")),
              log->indexOf(QStringLiteral("pasteboard.lend I go")));
    EXPECT_EQ(log->last(), QStringLiteral("orderOut"));
    expectReset();
}

TEST_F(SessionRunTest, AProviderFailureKeepsTheSessionForAnotherAction) {
    capture(QStringLiteral("me goes"));
    coordinator->run(action(TextAction::fixGrammar));
    transport.answer(401, R"({"error":{"message":"Incorrect API key provided"}})");
    awaitEnd();
    EXPECT_FALSE(coordinator->isWorking());
    EXPECT_EQ(coordinator->errorMessage(), QStringLiteral("Incorrect API key provided"));
    EXPECT_TRUE(panel->isVisible);
    ASSERT_NE(coordinator->currentSession(), nullptr);

    coordinator->run(action(TextAction::casual));
    EXPECT_EQ(coordinator->errorMessage(), std::nullopt);
    EXPECT_EQ(coordinator->currentActionTitle(), QStringLiteral("Make It Casual"));
    answerText("hey");
    EXPECT_EQ(written(), QStringLiteral("hey"));
    expectReset();
}

TEST_F(SessionRunTest, ResetsTheWorkBeforeItSaysWhy) {
    capture(QStringLiteral("me goes"));
    coordinator->run(action(TextAction::fixGrammar));
    bool wasWorking = true;
    QObject::connect(coordinator.get(), &Observable::objectWillChange, coordinator.get(), [&] {
        if (coordinator->errorMessage())
            return;
        wasWorking = coordinator->isWorking();
    });
    transport.fail(QStringLiteral("offline"));
    awaitEnd();
    EXPECT_FALSE(wasWorking);
    EXPECT_EQ(coordinator->errorMessage(), QStringLiteral("offline"));
}

TEST_F(SessionRunTest, AFailedWriteBackKeepsTheSession) {
    capture(QStringLiteral("me goes"));
    focus->replacement.outcome = Replacement::Outcome::refused;
    chords->result.outcome = ChordResult::Outcome::withheld;
    coordinator->run(action(TextAction::fixGrammar));
    answerText("I go");
    EXPECT_EQ(
        coordinator->errorMessage(),
        QStringLiteral("Quillmender could not replace the selected text back in the source app."));
    EXPECT_FALSE(coordinator->isWorking());
    EXPECT_NE(coordinator->currentSession(), nullptr);
    EXPECT_TRUE(panel->isVisible);
}

TEST_F(SessionRunTest, ThePanelThatHasToStepsAsideForAPasteAlone) {
    capture(QStringLiteral("me goes"));
    panel->needsSteppingAside = true;
    coordinator->run(action(TextAction::fixGrammar));
    answerText("I go");
    EXPECT_FALSE(log->contains(QStringLiteral("stepAside"))) << "accessibility needs no focus";

    capture(QStringLiteral("me goes"));
    focus->replacement.outcome = Replacement::Outcome::refused;
    coordinator->run(action(TextAction::fixGrammar));
    answerText("I go");
    EXPECT_LT(log->indexOf(QStringLiteral("focus.replace 0+7 I go")),
              log->indexOf(QStringLiteral("stepAside")));
    EXPECT_LT(log->indexOf(QStringLiteral("stepAside")),
              log->indexOf(QStringLiteral("pasteboard.lend I go")));
    EXPECT_EQ(log->last(2), QStringList({QStringLiteral("stayAway"), QStringLiteral("orderOut")}));
}

TEST_F(SessionRunTest, ThePanelThatHasToStepsAsideForACopyAlone) {
    capture(QStringLiteral("me goes"));
    panel->needsSteppingAside = true;
    capture(QStringLiteral("me goes"));
    EXPECT_FALSE(log->contains(QStringLiteral("stepAside"))) << "accessibility needs no focus";

    focus->reading.selectedText = std::nullopt;
    log->clear();
    coordinator->beginWorkflow();
    awaitEnd();
    ASSERT_TRUE(log->contains(QStringLiteral("stepAside")));
    ASSERT_TRUE(log->contains(QStringLiteral("come back")));
    EXPECT_LT(log->indexOf(QStringLiteral("stepAside")), log->indexOf(QStringLiteral("type copy")));
    EXPECT_LT(log->indexOf(QStringLiteral("come back")),
              log->indexOf(QStringLiteral("makeKeyAndOrderFront")));
}

TEST_F(SessionRunTest, ThePanelComesBackWhenThePasteFails) {
    capture(QStringLiteral("me goes"));
    panel->needsSteppingAside = true;
    focus->replacement.outcome = Replacement::Outcome::refused;
    chords->result.outcome = ChordResult::Outcome::withheld;
    coordinator->run(action(TextAction::fixGrammar));
    bool wasBackFirst = false;
    QObject::connect(coordinator.get(), &Observable::objectWillChange, coordinator.get(),
                     [&] { wasBackFirst = log->last() == QStringLiteral("come back"); });
    answerText("I go");
    EXPECT_EQ(log->last(), QStringLiteral("come back"));
    EXPECT_FALSE(log->contains(QStringLiteral("stayAway")));
    EXPECT_TRUE(wasBackFirst) << "before it says why";
    EXPECT_TRUE(coordinator->errorMessage());
    EXPECT_NE(coordinator->currentSession(), nullptr);
}

TEST_F(SessionRunTest, AnUncertainWriteBackIsNotPastedAndGivesTheSessionUp) {
    capture(QStringLiteral("text"));
    focus->replacement.outcome = Replacement::Outcome::uncertain;
    coordinator->run(coordinator->actions().constFirst());
    answerText("answer");
    EXPECT_EQ(coordinator->errorMessage(), AppFailure::replacementFailed().errorDescription());
    EXPECT_FALSE(log->contains(QStringLiteral("type paste")));
    EXPECT_TRUE(log->filter(QStringLiteral("pasteboard.lend")).isEmpty());
    EXPECT_TRUE(panel->isVisible);
    EXPECT_EQ(coordinator->currentSession(), nullptr);
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("text"));

    log->clear();
    coordinator->run(coordinator->actions().constFirst());
    EXPECT_EQ(coordinator->errorMessage(), AppFailure::noSelectionFound().errorDescription());
    EXPECT_EQ(*log, QStringList());
}

TEST_F(SessionRunTest, AnUncertainWriteBackLeavesALaterSessionAlone) {
    capture(QStringLiteral("first"));
    focus->replacement.outcome = Replacement::Outcome::uncertain;
    coordinator->run(coordinator->actions().constFirst());
    capture(QStringLiteral("second"));
    const SelectionSessionRef second = coordinator->currentSession();
    answerText("answer");
    EXPECT_EQ(coordinator->currentSession(), second);
}

TEST_F(SessionRunTest, AMissingKeyStartsNoRequest) {
    secrets->items.clear();
    capture(QStringLiteral("me goes"));
    coordinator->run(action(TextAction::fixGrammar));
    EXPECT_EQ(coordinator->errorMessage(),
              QStringLiteral("Add your OpenAI API key in Settings before using Quillmender."));
    EXPECT_TRUE(transport.requests.isEmpty());
}

TEST_F(SessionRunTest, RunsTheFreeInstructionTrimmed) {
    capture(QStringLiteral("meeting notes"));
    coordinator->setCustomInstruction(QStringLiteral("  write an email \n"));
    coordinator->runCustomInstruction();
    EXPECT_EQ(coordinator->currentActionTitle(), QStringLiteral("Generate from Prompt"));
    ASSERT_EQ(transport.requests.size(), 1);
    EXPECT_TRUE(transport.requests.first().body.contains(
        "Instruction:\\nwrite an email\\n\\nSource text:\\nmeeting notes\""));
    answerText("Dear all");
    EXPECT_EQ(written(), QStringLiteral("Dear all"));
    expectReset();
}

TEST_F(SessionRunTest, KeepsTheInstructionWhenItFails) {
    capture(QStringLiteral("meeting notes"));
    coordinator->setCustomInstruction(QStringLiteral("write"));
    coordinator->runCustomInstruction();
    transport.fail(QStringLiteral("offline"));
    awaitEnd();
    EXPECT_EQ(coordinator->customInstruction(), QStringLiteral("write"));
}

TEST_F(SessionRunTest, ABlankInstructionIsRefused) {
    capture(QStringLiteral("meeting notes"));
    coordinator->setCustomInstruction(QStringLiteral(" \n"));
    coordinator->runCustomInstruction();
    EXPECT_EQ(coordinator->errorMessage(), QStringLiteral("Add an instruction first."));
    EXPECT_EQ(coordinator->customInstruction(), QStringLiteral(" \n"));
    EXPECT_TRUE(transport.requests.isEmpty());
}

TEST_F(SessionRunTest, ARunUnderWayFinishesInTheSessionThatItHolds) {
    capture(QStringLiteral("first"));
    coordinator->run(action(TextAction::fixGrammar));
    select(QStringLiteral("second text"));
    coordinator->beginWorkflow();
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("second text"));
    EXPECT_TRUE(coordinator->isWorking());
    answerText("1st");
    EXPECT_EQ(written(), QStringLiteral("1st"));
    expectReset();
    EXPECT_FALSE(panel->isVisible);
}

TEST_F(SessionRunTest, ClosingThePanelResetsButNotTheWork) {
    capture(QStringLiteral("first"));
    coordinator->run(action(TextAction::fixGrammar));
    coordinator->setCustomInstruction(QStringLiteral("typed"));
    coordinator->hidePanel();
    expectReset();
    EXPECT_TRUE(coordinator->isWorking());
    answerText("1st");
    EXPECT_EQ(written(), QStringLiteral("1st"));
}

TEST_F(SessionRunTest, AKeyOfBlanksIsAMissingKey) {
    for (const char *blanks : {" ", "\n\t  "}) {
        secrets->items.first() = blanks;
        coordinator->settingsStore().setSelectedProvider(AIProvider::openAI);
        capture(QStringLiteral("me goes"));
        coordinator->run(action(TextAction::fixGrammar));
        EXPECT_EQ(coordinator->errorMessage(),
                  QStringLiteral("Add your OpenAI API key in Settings before using Quillmender."));
        EXPECT_TRUE(transport.requests.isEmpty());
    }
}

TEST_F(SessionRunTest, ASuccessIsPublishedInItsOrder) {
    capture(QStringLiteral("me goes"));
    coordinator->setCustomInstruction(QStringLiteral("typed"));
    PublishedChanges changes(*coordinator);
    coordinator->run(action(TextAction::fixGrammar));
    EXPECT_EQ(changes.take(), QStringList({QStringLiteral("working: yes"),
                                           QStringLiteral("action: Fix My Grammar")}));
    answerText("I go");
    EXPECT_EQ(changes.take(),
              QStringList({QStringLiteral("working: no"), QStringLiteral("session: none"),
                           QStringLiteral("action: "), QStringLiteral("preview: "),
                           QStringLiteral("description: "), QStringLiteral("instruction: ")}));
}

TEST_F(SessionRunTest, AFailureIsPublishedInItsOrder) {
    capture(QStringLiteral("me goes"));
    coordinator->setCustomInstruction(QStringLiteral("write"));
    PublishedChanges changes(*coordinator);
    coordinator->runCustomInstruction();
    EXPECT_EQ(changes.take(), QStringList({QStringLiteral("working: yes"),
                                           QStringLiteral("action: Generate from Prompt")}));
    transport.fail(QStringLiteral("offline"));
    awaitEnd();
    EXPECT_EQ(changes.take(),
              QStringList({QStringLiteral("working: no"), QStringLiteral("error: offline")}));
    coordinator->run(action(TextAction::casual));
    EXPECT_EQ(changes.take(),
              QStringList({QStringLiteral("working: yes"), QStringLiteral("error: none"),
                           QStringLiteral("action: Make It Casual")}));
}

TEST_F(SessionRunTest, HidingIsPublishedInItsOrderOnceThePanelIsAway) {
    focus->reading.value = QStringLiteral("all of it");
    coordinator->beginWorkflow();
    coordinator->run(action(TextAction::fixGrammar));
    transport.fail(QStringLiteral("offline"));
    awaitEnd();
    coordinator->setCustomInstruction(QStringLiteral("write"));
    PublishedChanges changes(*coordinator);
    bool wasVisible = false;
    QObject::connect(coordinator.get(), &Observable::objectWillChange, coordinator.get(),
                     [&] { wasVisible = wasVisible || panel->isVisible; });
    coordinator->hidePanel();
    EXPECT_EQ(changes.take(),
              QStringList({QStringLiteral("session: none"), QStringLiteral("action: "),
                           QStringLiteral("error: none"), QStringLiteral("preview: "),
                           QStringLiteral("title: Selected Text"), QStringLiteral("description: "),
                           QStringLiteral("instruction: ")}));
    EXPECT_FALSE(wasVisible);
}

TEST_F(SessionRunTest, TheCapturedTextIsSentAsItWasCaptured) {
    focus->reading.value = QStringLiteral("  all\tof it \n");
    coordinator->beginWorkflow();
    coordinator->run(action(TextAction::fixGrammar));
    EXPECT_TRUE(transport.requests.constLast().body.contains("Text:\\n  all\\tof it \\n\""));
    coordinator->setCustomInstruction(QStringLiteral("x"));
    coordinator->runCustomInstruction();
    EXPECT_TRUE(transport.requests.constLast().body.contains("Source text:\\n  all\\tof it \\n\""));
}

TEST_F(SessionRunTest, TheSelectedProviderIsAskedWithItsSettings) {
    coordinator->settingsStore().setSelectedProvider(AIProvider::anthropic);
    coordinator->settingsStore().setModel(AIProvider::anthropic, QStringLiteral(" m2 "));
    coordinator->settingsStore().setEndpoint(AIProvider::anthropic,
                                             QStringLiteral(" https://host/e2\n"));
    secrets->items[{QStringLiteral("com.quillmender.anthropic"), QStringLiteral("api-key")}] =
        " k2\n";
    capture(QStringLiteral("me goes"));
    coordinator->run(action(TextAction::fixGrammar));
    ASSERT_EQ(transport.requests.size(), 1);
    const HttpRequest &request = transport.requests.constFirst();
    EXPECT_EQ(request.url, QUrl(QStringLiteral("https://host/e2")));
    EXPECT_EQ(request.headers.at(1).second, "k2");
    EXPECT_TRUE(request.body.startsWith(R"({"model":"m2",)"));
}

TEST_F(SessionRunTest, WhatIsTypedForTheInstructionIsPublishedAsItIs) {
    PublishedChanges changes(*coordinator);
    coordinator->setCustomInstruction(QStringLiteral(" a \n"));
    EXPECT_EQ(changes.take(), QStringList(QStringLiteral("instruction:  a \n")));
    EXPECT_EQ(coordinator->customInstruction(), QStringLiteral(" a \n"));
}

} // namespace
} // namespace quillmender
