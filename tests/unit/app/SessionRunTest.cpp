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

TEST_F(SessionRunTest, needsASession) {
    coordinator->run(action(TextAction::casual));
    EXPECT_EQ(coordinator->errorMessage(), noSelection);
    coordinator->setCustomInstruction(QStringLiteral("write"));
    coordinator->runCustomInstruction();
    EXPECT_EQ(coordinator->errorMessage(), noSelection);
    EXPECT_TRUE(log->isEmpty());
}

TEST_F(SessionRunTest, sendsTheRenderedPromptAndReplacesTheText) {
    capture(QStringLiteral("me goes"));
    coordinator->run(action(TextAction::fixGrammar));
    EXPECT_TRUE(coordinator->isWorking());
    EXPECT_EQ(coordinator->currentActionTitle(), QStringLiteral("Fix My Grammar"));
    ASSERT_EQ(transport.requests.size(), 1);
    EXPECT_TRUE(transport.requests.first().body.contains("Text:\\nme goes"));
    log->clear();

    answerText("I go");
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("copy AXValue"),
                        QStringLiteral("set AXValue I go"),
                        QStringLiteral("set AXSelectedTextRange 0+4"),
                        QStringLiteral("orderOut"),
                    }));
    EXPECT_FALSE(coordinator->isWorking());
    expectReset();
    EXPECT_EQ(value(), QStringLiteral("I go"));
}

TEST_F(SessionRunTest, pastesWhenAccessibilityRefuses) {
    capture(QStringLiteral("me goes"));
    accessibility->refusedAttributes = {QStringLiteral("AXValue")};
    coordinator->run(action(TextAction::fixGrammar));
    answerText("I go");
    EXPECT_LT(log->indexOf(QStringLiteral("set AXValue I go")),
              log->indexOf(QStringLiteral("pasteboard.setString I go")));
    EXPECT_EQ(log->last(), QStringLiteral("orderOut"));
    expectReset();
}

TEST_F(SessionRunTest, aProviderFailureKeepsTheSessionForAnotherAction) {
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
    EXPECT_EQ(value(), QStringLiteral("hey"));
    expectReset();
}

TEST_F(SessionRunTest, resetsTheWorkBeforeItSaysWhy) {
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

TEST_F(SessionRunTest, aFailedWriteBackKeepsTheSession) {
    capture(QStringLiteral("me goes"));
    accessibility->refusedAttributes = {QStringLiteral("AXValue")};
    keyEvents->readiness = ChordReadiness::withheld;
    coordinator->run(action(TextAction::fixGrammar));
    answerText("I go");
    EXPECT_EQ(
        coordinator->errorMessage(),
        QStringLiteral("Quillmender could not replace the selected text back in the source app."));
    EXPECT_FALSE(coordinator->isWorking());
    EXPECT_NE(coordinator->currentSession(), nullptr);
    EXPECT_TRUE(panel->isVisible);
}

TEST_F(SessionRunTest, anUncertainWriteBackIsNotPastedAndGivesTheSessionUp) {
    capture(QStringLiteral("text"));
    accessibility->refusedAttributes = {QStringLiteral("AXValue")};
    accessibility->refusal = AccessibilityError::cannotComplete;
    coordinator->run(coordinator->actions().constFirst());
    answerText("answer");
    EXPECT_EQ(coordinator->errorMessage(), AppFailure::replacementFailed().errorDescription());
    EXPECT_FALSE(log->contains(QStringLiteral("prepareChord paste")));
    EXPECT_TRUE(log->filter(QStringLiteral("setString")).isEmpty());
    EXPECT_TRUE(panel->isVisible);
    EXPECT_EQ(coordinator->currentSession(), nullptr);
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("text"));

    log->clear();
    coordinator->run(coordinator->actions().constFirst());
    EXPECT_EQ(coordinator->errorMessage(), AppFailure::noSelectionFound().errorDescription());
    EXPECT_EQ(*log, QStringList());
}

TEST_F(SessionRunTest, anUncertainWriteBackLeavesALaterSessionAlone) {
    capture(QStringLiteral("first"));
    accessibility->refusedAttributes = {QStringLiteral("AXValue")};
    accessibility->refusal = AccessibilityError::cannotComplete;
    coordinator->run(coordinator->actions().constFirst());
    capture(QStringLiteral("second"));
    const SelectionSessionRef second = coordinator->currentSession();
    answerText("answer");
    EXPECT_EQ(coordinator->currentSession(), second);
}

TEST_F(SessionRunTest, aMissingKeyStartsNoRequest) {
    secrets->items.clear();
    capture(QStringLiteral("me goes"));
    coordinator->run(action(TextAction::fixGrammar));
    EXPECT_EQ(coordinator->errorMessage(),
              QStringLiteral("Add your OpenAI API key in Settings before using Quillmender."));
    EXPECT_TRUE(transport.requests.isEmpty());
}

TEST_F(SessionRunTest, runsTheFreeInstructionTrimmed) {
    capture(QStringLiteral("meeting notes"));
    coordinator->setCustomInstruction(QStringLiteral("  write an email \n"));
    coordinator->runCustomInstruction();
    EXPECT_EQ(coordinator->currentActionTitle(), QStringLiteral("Generate from Prompt"));
    ASSERT_EQ(transport.requests.size(), 1);
    EXPECT_TRUE(transport.requests.first().body.contains(
        "Instruction:\\nwrite an email\\n\\nSource text:\\nmeeting notes\""));
    answerText("Dear all");
    EXPECT_EQ(value(), QStringLiteral("Dear all"));
    expectReset();
}

TEST_F(SessionRunTest, keepsTheInstructionWhenItFails) {
    capture(QStringLiteral("meeting notes"));
    coordinator->setCustomInstruction(QStringLiteral("write"));
    coordinator->runCustomInstruction();
    transport.fail(QStringLiteral("offline"));
    awaitEnd();
    EXPECT_EQ(coordinator->customInstruction(), QStringLiteral("write"));
}

TEST_F(SessionRunTest, aBlankInstructionIsRefused) {
    capture(QStringLiteral("meeting notes"));
    coordinator->setCustomInstruction(QStringLiteral(" \n"));
    coordinator->runCustomInstruction();
    EXPECT_EQ(coordinator->errorMessage(), QStringLiteral("Add an instruction first."));
    EXPECT_EQ(coordinator->customInstruction(), QStringLiteral(" \n"));
    EXPECT_TRUE(transport.requests.isEmpty());
}

TEST_F(SessionRunTest, aRunUnderWayFinishesInTheSessionThatItHolds) {
    capture(QStringLiteral("first"));
    coordinator->run(action(TextAction::fixGrammar));
    select(QStringLiteral("second text"));
    coordinator->beginWorkflow();
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("second text"));
    EXPECT_TRUE(coordinator->isWorking());
    answerText("1st");
    EXPECT_EQ(value(), QStringLiteral("1std text"));
    expectReset();
    EXPECT_FALSE(panel->isVisible);
}

TEST_F(SessionRunTest, closingThePanelResetsButNotTheWork) {
    capture(QStringLiteral("first"));
    coordinator->run(action(TextAction::fixGrammar));
    coordinator->setCustomInstruction(QStringLiteral("typed"));
    coordinator->hidePanel();
    expectReset();
    EXPECT_TRUE(coordinator->isWorking());
    answerText("1st");
    EXPECT_EQ(value(), QStringLiteral("1st"));
}

TEST_F(SessionRunTest, aKeyOfBlanksIsAMissingKey) {
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

TEST_F(SessionRunTest, aSuccessIsPublishedInItsOrder) {
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

TEST_F(SessionRunTest, aFailureIsPublishedInItsOrder) {
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

TEST_F(SessionRunTest, hidingIsPublishedInItsOrderOnceThePanelIsAway) {
    accessibility->attributes[QStringLiteral("AXValue")] = QStringLiteral("all of it");
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

TEST_F(SessionRunTest, theCapturedTextIsSentAsItWasCaptured) {
    accessibility->attributes[QStringLiteral("AXValue")] = QStringLiteral("  all\tof it \n");
    coordinator->beginWorkflow();
    coordinator->run(action(TextAction::fixGrammar));
    EXPECT_TRUE(transport.requests.constLast().body.contains("Text:\\n  all\\tof it \\n\""));
    coordinator->setCustomInstruction(QStringLiteral("x"));
    coordinator->runCustomInstruction();
    EXPECT_TRUE(transport.requests.constLast().body.contains("Source text:\\n  all\\tof it \\n\""));
}

TEST_F(SessionRunTest, theSelectedProviderIsAskedWithItsSettings) {
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

TEST_F(SessionRunTest, whatIsTypedForTheInstructionIsPublishedAsItIs) {
    PublishedChanges changes(*coordinator);
    coordinator->setCustomInstruction(QStringLiteral(" a \n"));
    EXPECT_EQ(changes.take(), QStringList(QStringLiteral("instruction:  a \n")));
    EXPECT_EQ(coordinator->customInstruction(), QStringLiteral(" a \n"));
}

} // namespace
} // namespace quillmender
