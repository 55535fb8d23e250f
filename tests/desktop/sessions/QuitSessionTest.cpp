#include "desktop/sessions/ClipboardManager.h"
#include "desktop/sessions/KeyRecorder.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/TextKeys.h"

#include <QDBusMessage>
#include <QLocalServer>

#include <csignal>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;

const QString wrong = QStringLiteral("recieve");
const QString letter = QStringLiteral("Hello, you recieve it.");

class QuitSessionTest : public SessionFixture {
  protected:
    /// A session that waits for the provider.
    void openRequest() {
        editor_ = TestApplication::mousepad(desktop(), letter);
        text_ = editor_->focusedText();
        waitUntil([&] { return text_->text() == letter; }, QStringLiteral("the letter is open"));
        selectByKeyboard(input(), letter, wrong);
        waitUntil([&] { return text_->selectedText() == wrong; }, QStringLiteral("it is selected"));
        answerLater(QStringLiteral("receive"));
        pressHotKey();
        waitForPanel(wrong);
        click(QStringLiteral("Fix My Grammar"));
        waitForRequest();
    }

    void activateAction(const QString &action) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("com.quillmender.Quillmender"),
            QStringLiteral("/com/quillmender/Quillmender"),
            QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
        call << action << QVariantList() << QVariantMap();
        const QDBusMessage reply = desktop().sessionBus().connection().call(call);
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    }

    void expectEnd() {
        waitUntil([&] { return !program().process().isRunning(); },
                  QStringLiteral("the program has ended"));
        EXPECT_EQ(program().process().exitCode(), 0);
        waitUntilPanelIsGone();
    }

    void expectEditorUntouched() {
        EXPECT_EQ(text_->text(), letter);
        EXPECT_EQ(text_->selectedText(), wrong);
    }

  private:
    std::optional<TestApplication> editor_;
    std::optional<Accessible> text_;
};

TEST_F(QuitSessionTest, DuringARequest) {
    start();
    openRequest();
    activateAction(QStringLiteral("quit"));
    expectEnd();
    expectEditorUntouched();
    expectClipboardNeverTaken();
}

TEST_F(QuitSessionTest, BySignalDuringARequest) {
    start();
    openRequest();
    ::kill(static_cast<pid_t>(program().pid()), SIGTERM);
    expectEnd();
    expectEditorUntouched();
    expectClipboardNeverTaken();
}

/// The program has borrowed the clipboard when it is to end. A clipboard manager is there, without
/// which nothing outlives its owner.
class QuitWithClipboardTest : public QuitSessionTest {
  protected:
    void SetUp() override {
        QuitSessionTest::SetUp();
        startDesktop();
        startTheProgram();
        manager_.emplace(desktop().display());
        application_.emplace(desktop());
        answerWith(QStringLiteral("receive"));
        pressHotKey();
        waitForPress(QStringLiteral("Control+c"));
        copied_.emplace(desktop().display(), harness::ClipboardOwner::plainText(wrong));
    }

    virtual void startTheProgram() { startProgram(); }

    void signal(int number) { ::kill(static_cast<pid_t>(program().pid()), number); }

    void waitForAnswerOnTheClipboard() {
        harness::ClipboardProbe probe(desktop().display());
        waitUntil([&] { return probe.text() == QStringLiteral("receive"); },
                  QStringLiteral("the answer is on the clipboard"));
    }

    void waitForPress(const QString &key) {
        waitUntil([&] { return application_->presses().contains(key); },
                  QStringLiteral("%1 is pressed").arg(key));
    }

    void expectClipboardSaved() {
        EXPECT_TRUE(manager_->hasTakenOver());
        expectClipboardUntouched();
    }

    void TearDown() override {
        copied_.reset();
        application_.reset();
        manager_.reset();
        QuitSessionTest::TearDown();
    }

  private:
    std::optional<ClipboardManager> manager_;
    std::optional<KeyRecorder> application_;
    std::optional<harness::ClipboardOwner> copied_;
};

TEST_F(QuitWithClipboardTest, RightAfterTheCopyChord) {
    activateAction(QStringLiteral("quit"));
    expectEnd();
    expectClipboardSaved();
}

TEST_F(QuitWithClipboardTest, RightAfterThePasteChord) {
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    waitForPress(QStringLiteral("Control+v"));
    activateAction(QStringLiteral("quit"));
    // The application asks late; what it gets must still be what it was told to paste.
    EXPECT_EQ(harness::ClipboardProbe(desktop().display()).text(), QStringLiteral("receive"));
    expectEnd();
    expectClipboardSaved();
}

TEST_F(QuitWithClipboardTest, BeforeThePasteChord) {
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    waitForAnswerOnTheClipboard();
    activateAction(QStringLiteral("quit"));
    expectEnd();
    expectClipboardSaved();
}

TEST_F(QuitWithClipboardTest, BySeveralSignalsAsALogOutSendsThem) {
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    waitForAnswerOnTheClipboard();
    signal(SIGTERM);
    waitUntilPanelIsGone();
    for (const int again : {SIGTERM, SIGHUP, SIGINT, SIGTERM})
        signal(again);
    expectEnd();
    expectClipboardSaved();
}

/// Nobody asks the program itself, but the toolkit that it is made with.
class QuitByTheToolkitTest : public QuitWithClipboardTest {
  protected:
    void startTheProgram() override {
        auto setup =
            harness::ProductProcess::openAi(provider().baseUrl() + QStringLiteral("/v1/responses"));
        setup.program = QStringLiteral(QUILLMENDER_QUITTING_PROGRAM);
        startProgram(setup);
    }
};

TEST_F(QuitByTheToolkitTest, BeforeThePasteChord) {
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    waitForAnswerOnTheClipboard();
    signal(SIGUSR1);
    expectEnd();
    expectClipboardSaved();
}

TEST_F(QuitByTheToolkitTest, RightAfterTheCopyChord) {
    signal(SIGUSR1);
    expectEnd();
    expectClipboardSaved();
}

TEST_F(QuitByTheToolkitTest, WhileTheSettingsAreOpen) {
    waitForPanel(wrong);
    click(QStringLiteral("Settings"));
    waitUntil([&] { return panelShows(QStringLiteral("Active Provider")); },
              QStringLiteral("the settings are shown"));
    signal(SIGUSR1);
    expectEnd();
    expectClipboardSaved();
}

/// A session manager whose connection is lost would end the program on the spot, and one that says
/// nothing would never let it start.
TEST_F(QuitSessionTest, NoSessionManagerHasAHandInIt) {
    startDesktop();
    QLocalServer manager;
    ASSERT_TRUE(manager.listen(desktop().folders().runtime() + QStringLiteral("/manager")));
    startProgram({{QStringLiteral("SESSION_MANAGER"),
                   QStringLiteral("local/%1:%2")
                       .arg(QSysInfo::machineHostName(), manager.fullServerName())}});
    openRequest();
    EXPECT_FALSE(manager.hasPendingConnections());
    manager.close();
    provider().release();
    waitUntilPanelIsGone();
    EXPECT_TRUE(program().process().isRunning());
    expectClipboardNeverTaken();
}

TEST_F(QuitWithClipboardTest, AfterASession) {
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    // This application has no use for a paste.
    waitForPanel(
        QStringLiteral("Quillmender could not replace the selected text back in the source app."));
    activateAction(QStringLiteral("quit"));
    expectEnd();
    expectClipboardSaved();
}

TEST_F(QuitSessionTest, WhenNothingRuns) {
    start();
    activateAction(QStringLiteral("quit"));
    expectEnd();
    expectClipboardNeverTaken();
}

TEST_F(QuitSessionTest, SecondStartLeavesTheFirstAlone) {
    start();
    harness::ChildProcess second(desktop().command(program().path()));
    waitUntil([&] { return !second.isRunning(); }, QStringLiteral("the second one has ended"));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(program().process().isRunning());
    openRequest();
    provider().release();
    waitUntilPanelIsGone();
    expectClipboardNeverTaken();
}

TEST_F(QuitSessionTest, TransformIsAnActionOnTheBusToo) {
    start();
    const auto editor = TestApplication::mousepad(desktop(), letter);
    const Accessible text = editor.focusedText();
    waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
    activateAction(QStringLiteral("transform"));
    waitForPanel(letter);
    expectClipboardNeverTaken();
}

} // namespace
} // namespace quillmender
