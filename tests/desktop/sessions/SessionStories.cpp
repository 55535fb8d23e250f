#include "desktop/sessions/SessionStories.h"

#include "desktop/harness/TestApplication.h"
#include "desktop/sessions/TextKeys.h"
#include "support/ProviderAnswers.h"

#include <QFile>
#include <gtest/gtest.h>

namespace quillmender {

using harness::Accessible;
using harness::AccessibleState;
using harness::TestApplication;
using harness::waitUntil;

namespace {

const QString wrong = QStringLiteral("recieve");
const QString right = QStringLiteral("receive");
const QString letter = QStringLiteral("Hello, you recieve it.");
const QString mended = QStringLiteral("Hello, you receive it.");
const QString fix = QStringLiteral("Fix My Grammar");

/// An editor with the letter, which the accessibility bus knows.
class OpenLetter {
  public:
    explicit OpenLetter(SessionSteps &session)
        : session_(session),
          editor_(TestApplication::mousepad(session.sessionDesktop(), letter)),
          text_(editor_.focusedText()) {
        waitForText(letter);
    }

    const Accessible &text() const { return text_; }
    TestApplication &editor() { return editor_; }

    void waitForText(const QString &text) const {
        waitUntil([&] { return text_.text() == text; },
                  QStringLiteral("the editor has \"%1\"").arg(text));
    }

    void select(const QString &word) {
        selectByKeyboard(session_.sessionDesktop().input(), letter, word);
        waitUntilSelected(word);
    }

    void waitUntilSelected(const QString &word) const {
        waitUntil([&] { return text_.selectedText() == word; },
                  QStringLiteral("%1 is selected").arg(word));
    }

    void waitUntilActive() const {
        waitUntil([&] { return session_.sessionDesktop().windows().active() == editor_.window(); },
                  QStringLiteral("the editor has the focus again"));
    }

  private:
    SessionSteps &session_;
    TestApplication editor_;
    Accessible text_;
};

/// One that is captured by the copy chord and answered by the paste chord.
TestApplication openLetterOffTheBus(SessionSteps &session) {
    QFile file(session.sessionDesktop().folders().home() + QStringLiteral("/letter.txt"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(letter.toUtf8());
    file.close();
    TestApplication editor(session.sessionDesktop(), QStringLiteral("env"),
                           {QStringLiteral("NO_AT_BRIDGE=1"), QStringLiteral("mousepad"),
                            QStringLiteral("--disable-server"), file.fileName()});
    selectByKeyboard(session.sessionDesktop().input(), letter, wrong);
    session.waitUntilSelected(wrong);
    return editor;
}

void mendTheWord(SessionSteps &session) {
    session.answerWith(right);
    session.pressHotKey();
    session.waitForPanel(wrong);
    session.click(fix);
    EXPECT_TRUE(promptOf(session.waitForRequest()).endsWith(wrong));
    session.waitUntilPanelIsGone();
    // It may have gone for the paste.
    session.waitUntilWritten();
}

void theSelectedWordIsReplaced(SessionSteps &session) {
    session.start();
    OpenLetter open(session);
    open.select(wrong);
    mendTheWord(session);
    EXPECT_EQ(open.text().text(), mended);
    EXPECT_EQ(open.text().selectedText(), right);
    open.waitUntilActive();
    session.expectClipboardNeverTaken();
}

void theKeyboardAloneIsEnough(SessionSteps &session) {
    session.start();
    OpenLetter open(session);
    open.select(wrong);
    session.answerWith(right);
    session.pressHotKey();
    session.waitForPanel(wrong);
    session.tabTo(fix);
    session.sessionDesktop().input().chord({XK_Return});
    EXPECT_TRUE(promptOf(session.waitForRequest()).endsWith(wrong));
    session.waitUntilPanelIsGone();
    EXPECT_EQ(open.text().text(), mended);
    session.expectClipboardNeverTaken();
}

void theWholeFieldIsReplaced(SessionSteps &session) {
    session.start();
    OpenLetter open(session);
    const QString answer = QStringLiteral("\U0001F44B You receive it, \u00e0 bient\u00f4t.");
    session.answerWith(answer);
    session.pressHotKey();
    session.waitForPanel(letter);
    EXPECT_TRUE(session.panelShows(QStringLiteral("Captured Field")));
    session.click(QStringLiteral("Formalize"));
    EXPECT_TRUE(promptOf(session.waitForRequest()).endsWith(letter));
    session.waitUntilPanelIsGone();
    EXPECT_EQ(open.text().text(), answer);
    open.waitUntilActive();
    session.expectClipboardNeverTaken();
}

void withoutAccessibilityItIsCopiedAndPasted(SessionSteps &session) {
    session.start();
    const TestApplication editor = openLetterOffTheBus(session);
    mendTheWord(session);
    session.expectClipboardUntouched();
    session.expectTextByCopying(mended);
}

void aRefusedWriteIsPasted(SessionSteps &session) {
    session.start();
    const TestApplication chromium = TestApplication::chromium(
        session.sessionDesktop(), QStringLiteral("<textarea autofocus rows=5 cols=60 "
                                                 "oninput=\"document.title=value\" "
                                                 "onfocus=\"document.title='ready'\">%1</textarea>")
                                      .arg(letter));
    waitUntil([&] { return chromium.title().startsWith(QStringLiteral("ready")); },
              QStringLiteral("the text area has the focus"));
    selectByKeyboard(session.sessionDesktop().input(), letter, wrong);
    session.waitUntilSelected(wrong);
    mendTheWord(session);
    waitUntil([&] { return chromium.title().startsWith(mended); },
              QStringLiteral("the page has the new text"));
    session.expectClipboardUntouched();
}

void afterAnErrorTheSecondActionSucceeds(SessionSteps &session) {
    session.start();
    OpenLetter open(session);
    open.select(wrong);
    const QString message = QStringLiteral("Incorrect API key provided.");
    session.provider().setAnswer(test::ScriptedAnswer::http(401, test::errorBody(message)));
    session.pressHotKey();
    session.waitForPanel(wrong);
    session.click(QStringLiteral("Simplify"));
    session.waitForRequest();
    session.waitForPanel(message);
    EXPECT_TRUE(session.panelShows(wrong));
    EXPECT_EQ(open.text().text(), letter);
    session.expectClipboardNeverTaken();

    session.answerWith(right);
    session.click(fix);
    EXPECT_TRUE(promptOf(session.waitForRequest(2)).endsWith(wrong));
    session.waitUntilPanelIsGone();
    EXPECT_EQ(open.text().text(), mended);
    session.expectClipboardNeverTaken();
}

void pressedAgainTheHotKeyCapturesAnew(SessionSteps &session) {
    session.start();
    OpenLetter open(session);
    open.select(wrong);
    session.answerLater(right);
    session.pressHotKey();
    session.waitForPanel(wrong);
    session.click(fix);
    session.waitForRequest();

    // By another way than the keyboard, which the panel may have for itself.
    if (!session.panelKeepsKeyboard())
        open.editor().activate();
    open.text().select(0, static_cast<int>(QStringLiteral("Hello").size()));
    open.waitUntilSelected(QStringLiteral("Hello"));
    session.pressHotKey();
    session.waitForPanel(QStringLiteral("Hello"));
    EXPECT_FALSE(session.panelShows(wrong));

    session.provider().release();
    session.waitUntilPanelIsGone();
    EXPECT_EQ(open.text().text(), mended);
    EXPECT_EQ(session.provider().requests().size(), 1);
    session.expectClipboardNeverTaken();
}

void aHeldHotKeyPressesNothingInThePanel(SessionSteps &session) {
    session.start();
    OpenLetter open(session);
    open.select(wrong);
    harness::UserInput &input = session.sessionDesktop().input();
    input.press(XK_Control_L);
    input.press(XK_Alt_L);
    input.press(XK_space);
    session.waitForPanel(wrong);
    input.release(XK_Alt_L);
    input.release(XK_Control_L);
    input.release(XK_space);
    // What comes after it has been taken: nothing was before it.
    input.type(QStringLiteral("a b"));
    const Accessible field = session.sessionDesktop().accessible().waitFor(
        session.programId(), QStringLiteral("text"), QStringLiteral("Generate From Prompt"));
    waitUntil([&] { return field.text() == QStringLiteral("a b"); },
              QStringLiteral("only what was typed is there"));
    EXPECT_EQ(session.provider().requests().size(), 0U);
    EXPECT_EQ(open.text().text(), letter);
    session.expectClipboardNeverTaken();
}

void heldKeysDoNotLeakIntoTheCopy(SessionSteps &session) {
    session.start();
    const TestApplication editor = openLetterOffTheBus(session);
    harness::UserInput &input = session.sessionDesktop().input();
    session.answerWith(right);
    input.press(XK_Control_L);
    input.press(XK_Alt_L);
    input.press(XK_space);
    // A hand lets go of them at some time, and not every desktop lets a chord by before.
    using std::chrono_literals::operator""ms;
    harness::becomesTrue([&] { return session.panelShows(wrong); }, 300ms);
    input.release(XK_space);
    input.release(XK_Alt_L);
    input.release(XK_Control_L);
    session.waitForPanel(wrong);
    session.click(fix);
    EXPECT_TRUE(promptOf(session.waitForRequest()).endsWith(wrong));
    session.waitUntilPanelIsGone();
    session.waitUntilWritten();
    session.expectClipboardUntouched();
    session.expectTextByCopying(mended);
}

void locksDoNotMatter(SessionSteps &session) {
    session.start();
    const TestApplication editor = openLetterOffTheBus(session);
    harness::UserInput &input = session.sessionDesktop().input();
    input.chord({XK_Caps_Lock});
    input.chord({XK_Num_Lock});
    mendTheWord(session);
    session.expectClipboardUntouched();
    input.chord({XK_Caps_Lock});
    input.chord({XK_Num_Lock});
    session.expectTextByCopying(mended);
}

void closedThePanelIsShownAgain(SessionSteps &session) {
    session.start();
    OpenLetter open(session);
    open.select(wrong);
    session.pressHotKey();
    session.waitForPanel(wrong);
    session.click(QStringLiteral("Close"));
    session.waitUntilPanelIsGone();
    open.waitUntilActive();
    EXPECT_TRUE(session.program().process().isRunning());

    open.select(QStringLiteral("Hello"));
    session.pressHotKey();
    session.waitForPanel(QStringLiteral("Hello"));
    EXPECT_EQ(open.text().text(), letter);
    session.expectClipboardNeverTaken();
}

void captureAgainTakesTheOtherSelection(SessionSteps &session) {
    session.start();
    OpenLetter open(session);
    open.select(wrong);
    session.pressHotKey();
    session.waitForPanel(wrong);
    open.text().select(0, static_cast<int>(QStringLiteral("Hello").size()));
    open.waitUntilSelected(QStringLiteral("Hello"));
    session.click(QStringLiteral("Capture Again"));
    session.waitForPanel(QStringLiteral("Hello"));
    EXPECT_FALSE(session.panelShows(wrong));
    session.answerWith(QStringLiteral("Good day"));
    session.click(QStringLiteral("Formalize"));
    EXPECT_TRUE(promptOf(session.waitForRequest()).endsWith(QStringLiteral("Hello")));
    session.waitUntilPanelIsGone();
    EXPECT_EQ(open.text().text(), QStringLiteral("Good day, you recieve it."));
    session.expectClipboardNeverTaken();
}

void quitDuringARequestLeavesEverything(SessionSteps &session) {
    session.start();
    OpenLetter open(session);
    open.select(wrong);
    session.answerLater(right);
    session.pressHotKey();
    session.waitForPanel(wrong);
    session.click(fix);
    session.waitForRequest();
    session.program().activateAction(QStringLiteral("quit"));
    waitUntil([&] { return !session.program().process().isRunning(); },
              QStringLiteral("the program has ended"));
    EXPECT_EQ(session.program().process().exitCode(), 0);
    EXPECT_EQ(open.text().text(), letter);
    EXPECT_EQ(open.text().selectedText(), wrong);
    session.expectClipboardNeverTaken();
}

} // namespace

const std::vector<SessionStory> &sessionStories() {
    static const std::vector<SessionStory> stories{
        {"TheSelectedWordIsReplaced", &theSelectedWordIsReplaced},
        {"TheKeyboardAloneIsEnough", &theKeyboardAloneIsEnough},
        {"TheWholeFieldIsReplaced", &theWholeFieldIsReplaced},
        {"WithoutAccessibilityItIsCopiedAndPasted", &withoutAccessibilityItIsCopiedAndPasted},
        {"ARefusedWriteIsPasted", &aRefusedWriteIsPasted},
        {"AfterAnErrorTheSecondActionSucceeds", &afterAnErrorTheSecondActionSucceeds},
        {"PressedAgainTheHotKeyCapturesAnew", &pressedAgainTheHotKeyCapturesAnew},
        {"AHeldHotKeyPressesNothingInThePanel", &aHeldHotKeyPressesNothingInThePanel},
        {"HeldKeysDoNotLeakIntoTheCopy", &heldKeysDoNotLeakIntoTheCopy},
        {"LocksDoNotMatter", &locksDoNotMatter},
        {"ClosedThePanelIsShownAgain", &closedThePanelIsShownAgain},
        {"CaptureAgainTakesTheOtherSelection", &captureAgainTakesTheOtherSelection},
        {"QuitDuringARequestLeavesEverything", &quitDuringARequestLeavesEverything}};
    return stories;
}

} // namespace quillmender
