#include "desktop/assistive/Letter.h"
#include "desktop/assistive/ScreenReader.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/SettingsForm.h"
#include "desktop/sessions/TextKeys.h"
#include "support/ProviderAnswers.h"

#include <QProcess>

#include <iostream>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;
using test::ScriptedAnswer;

const QString action = QStringLiteral("Fix My Grammar");

/// Somebody who sees nothing. What is said is printed, step by step.
class OrcaTest : public SessionFixture {
  protected:
    void SetUp() override {
        SessionFixture::SetUp();
        // Each release has words of its own.
        QProcess orca;
        orca.start(QStringLiteral("orca"), {QStringLiteral("--version")});
        ASSERT_TRUE(orca.waitForFinished(20000));
        const QByteArray version = orca.readAllStandardOutput().trimmed();
        if (!version.startsWith("43."))
            GTEST_SKIP() << "this is Orca " << version.toStdString() << ", not 43";
        startDesktop();
        reader_.emplace(desktop());
        startProgram();
        // The screen reader asks for what the toolkit does not have, and the toolkit says so.
        allowLog();
    }

    void TearDown() override {
        reader_.reset();
        SessionFixture::TearDown();
    }

    /// Waits until all of this has been said since the step before.
    void expectHeard(const char *step, const QStringList &words) {
        for (const QString &each : words)
            reader_->waitUntilSaid(each);
        std::cout << step << "\n";
        for (const QString &utterance : reader_->said())
            std::cout << "    " << utterance.toStdString() << "\n";
        reader_->forget();
    }

    void openPanel() {
        editor_ = TestApplication::mousepad(desktop(), letter);
        const Accessible text = editor_->focusedText();
        waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
        selectByKeyboard(input(), letter, wrong);
        waitUntil([&] { return text.selectedText() == wrong; },
                  QStringLiteral("the word is selected"));
        expectHeard("The word is selected", {wrong, QStringLiteral("selected")});
        pressHotKey();
        waitForPanel(wrong);
    }

    void failLater() {
        const auto answer = ScriptedAnswer::http(500, test::errorBody(failureMessage));
        ScriptedAnswer held;
        held.hold();
        for (const auto &step : answer.steps())
            held.send(step.bytes);
        provider().setAnswer(held);
    }

  private:
    std::optional<ScreenReader> reader_;
    std::optional<TestApplication> editor_;
};

TEST_F(OrcaTest, ASessionIsHeard) {
    openPanel();
    expectHeard("Control + Alt + Space",
                {QStringLiteral("Quillmender dialog"), QStringLiteral("Selected Text: recieve"),
                 QStringLiteral("Using only the highlighted text.")});
    tabTo(action);
    expectHeard("On the way to an action",
                {QStringLiteral("Fix My Grammar push button"),
                 QStringLiteral("Correct grammar while preserving structure.")});

    failLater();
    input().chord({XK_space});
    waitForRequest(1);
    expectHeard("Space", {QStringLiteral("Processing\u2026 Fix My Grammar")});
    provider().release();
    expectHeard("The provider fails", {failureMessage});

    answerWith(QStringLiteral("receive"));
    input().chord({XK_space});
    waitForRequest(2);
    waitUntilPanelIsGone();
    expectHeard("Space again, and the answer comes",
                {QStringLiteral("Processing\u2026 Fix My Grammar"), QStringLiteral("letter.txt"),
                 QStringLiteral("you receive it.")});
}

TEST_F(OrcaTest, TheSettingsAreHeard) {
    program().activateAction(QStringLiteral("settings"));
    SettingsForm settings(desktop(), program().pid());
    expectHeard("The settings open",
                {QStringLiteral("Quillmender Settings frame"), QStringLiteral("Settings form")});
    const QStringList stops[] = {
        {QStringLiteral("Provider panel"), QStringLiteral("Active Provider combo box"),
         QStringLiteral("OpenAI")},
        {QStringLiteral("Startup panel"),
         QStringLiteral("Launch Quillmender when I log in check box")},
        {QStringLiteral("Open Login Items Settings push button")},
        {QStringLiteral("OpenAI API Key password text")},
        {QStringLiteral("OpenAI Model text")},
        {QStringLiteral("OpenAI Endpoint text")},
        {QStringLiteral("Claude panel"), QStringLiteral("Anthropic API Key password text")},
    };
    for (const QStringList &words : stops) {
        input().chord({XK_Tab});
        expectHeard("Tab", words);
    }
    tabTo(QStringLiteral("Refresh"));
    expectHeard("On the way to the permissions", {QStringLiteral("Refresh push button")});
    input().chord({XK_space});
    expectHeard("Space", {QStringLiteral("Accessibility access granted")});
    tabTo(QStringLiteral("Remove"));
    expectHeard("On the way to the actions",
                {QStringLiteral("Edit push button"), QStringLiteral("Remove push button"),
                 QStringLiteral("Formalize")});
    input().chord({XK_space});
    expectHeard("Space", {QStringLiteral("Simplify")});
    tabTo(QStringLiteral("New Action"));
    expectHeard("On the way to a new action", {QStringLiteral("New Action push button")});
    input().chord({XK_space});
    expectHeard("Space",
                {QStringLiteral("New Action dialog"), QStringLiteral("Button Title text")});
}

TEST_F(OrcaTest, AboutIsHeard) {
    program().activateAction(QStringLiteral("about"));
    expectHeard("About opens", {QStringLiteral("About Quillmender frame"),
                                QStringLiteral("Quillmender is a macOS text-assistance utility"),
                                QStringLiteral("AI-generated output may be inaccurate")});
}

} // namespace
} // namespace quillmender
