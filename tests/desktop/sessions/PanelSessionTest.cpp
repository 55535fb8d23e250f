#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/TextKeys.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::AccessibleState;
using harness::TestApplication;
using harness::waitUntil;

const QString wrong = QStringLiteral("recieve");
const QString letter = QStringLiteral("Hello, you recieve it.");
const QString instruction = QStringLiteral("Make it a poem, please");

class PanelSessionTest : public SessionFixture {
  protected:
    void SetUp() override {
        SessionFixture::SetUp();
        start();
        editor_ = TestApplication::mousepad(desktop(), letter);
        text_ = editor_->focusedText();
        waitUntil([&] { return text_->text() == letter; }, QStringLiteral("the letter is open"));
        select(wrong);
    }

    const TestApplication &editor() const { return *editor_; }
    const Accessible &text() const { return *text_; }

    void select(const QString &word) {
        selectByKeyboard(input(), letter, word);
        waitUntil([&] { return text().selectedText() == word; },
                  QStringLiteral("%1 is selected").arg(word));
    }

    Accessible instructionEditor() {
        return desktop().accessible().waitForFocusedText(program().pid());
    }

    void typeInstruction() {
        const Accessible field = instructionEditor();
        input().type(instruction);
        waitUntil([&] { return field.text() == instruction; },
                  QStringLiteral("the instruction is typed"));
    }

    void expectReplaced(const QString &answer) {
        QString expected = letter;
        EXPECT_EQ(text().text(), expected.replace(wrong, answer));
        EXPECT_EQ(text().selectedText(), answer);
        expectClipboardNeverTaken();
    }

  private:
    std::optional<TestApplication> editor_;
    std::optional<Accessible> text_;
};

TEST_F(PanelSessionTest, ClosedByTheTitleBarAndShownAgain) {
    pressHotKey();
    const xcb_window_t panel = waitForPanel(wrong);
    typeInstruction();
    desktop().windows().close(panel);
    waitUntilPanelIsGone();
    EXPECT_TRUE(program().process().isRunning());
    waitUntil([&] { return desktop().windows().active() == editor().window(); },
              QStringLiteral("the editor has the focus again"));

    select(QStringLiteral("Hello"));
    pressHotKey();
    waitForPanel(QStringLiteral("Hello"));
    EXPECT_EQ(instructionEditor().text(), instruction);
    expectClipboardNeverTaken();
}

TEST_F(PanelSessionTest, StandsInTheMiddleEachTime) {
    for (int show = 0; show < 2; ++show) {
        pressHotKey();
        const xcb_window_t panel = waitForPanel(wrong);
        const QPoint off = desktop().windows().geometry(panel).center() -
                           QRect(QPoint(), harness::Desktop::Options().screen).center();
        EXPECT_LE(off.manhattanLength(), 2) << show;
        desktop().windows().close(panel);
        waitUntilPanelIsGone();
    }
}

TEST_F(PanelSessionTest, CloseForgetsTheInstruction) {
    pressHotKey();
    waitForPanel(wrong);
    typeInstruction();
    click(QStringLiteral("Close"));
    waitUntilPanelIsGone();
    waitUntil([&] { return desktop().windows().active() == editor().window(); },
              QStringLiteral("the editor has the focus again"));
    EXPECT_EQ(text().text(), letter);

    pressHotKey();
    waitForPanel(wrong);
    EXPECT_EQ(instructionEditor().text(), QString());
    expectClipboardNeverTaken();
}

TEST_F(PanelSessionTest, CaptureAgainAfterAnotherSelection) {
    constexpr QPoint besidesThePanel(20, 60);
    desktop().windows().move(editor().window(), besidesThePanel);
    pressHotKey();
    const xcb_window_t panel = waitForPanel(wrong);
    const QRect covered = desktop().windows().geometry(panel);
    const QPoint insideHello = text().characterExtents(2).center();
    ASSERT_FALSE(covered.contains(insideHello));
    input().doubleClick(insideHello);
    waitUntil([&] { return text().selectedText() == QStringLiteral("Hello"); },
              QStringLiteral("another word is selected"));
    EXPECT_EQ(desktop().windows().active(), editor().window());
    EXPECT_TRUE(desktop().windows().isViewable(panel));

    click(QStringLiteral("Capture Again"));
    waitForPanel(QStringLiteral("Hello"));
    EXPECT_FALSE(panelShows(wrong));
    answerWith(QStringLiteral("Good day"));
    click(QStringLiteral("Formalize"));
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(QStringLiteral("Hello")));
    waitUntilPanelIsGone();
    EXPECT_EQ(text().text(), QStringLiteral("Good day, you recieve it."));
    EXPECT_EQ(text().selectedText(), QStringLiteral("Good day"));
    expectClipboardNeverTaken();
}

TEST_F(PanelSessionTest, FreeInstructionByKeyboardOnly) {
    answerWith(QStringLiteral("receive"));
    pressHotKey();
    waitForPanel(wrong);
    typeInstruction();
    tabTo(QStringLiteral("Generate"));
    input().chord({XK_space});
    const QString prompt = promptOf(waitForRequest());
    EXPECT_TRUE(prompt.contains(instruction)) << prompt.toStdString();
    EXPECT_TRUE(prompt.contains(wrong)) << prompt.toStdString();
    waitUntilPanelIsGone();
    expectReplaced(QStringLiteral("receive"));
}

TEST_F(PanelSessionTest, ActionByKeyboardOnly) {
    answerLater(QStringLiteral("receive"));
    pressHotKey();
    waitForPanel(wrong);
    tabTo(QStringLiteral("Fix My Grammar"));
    input().chord({XK_Return});
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    // What must not be pressed twice cannot be, and what ends the wait can.
    for (const QString &title : {QStringLiteral("Fix My Grammar"), QStringLiteral("Generate"),
                                 QStringLiteral("Capture Again"), QStringLiteral("Settings")}) {
        const Accessible control =
            desktop().accessible().waitFor(program().pid(), QStringLiteral("push button"), title);
        waitUntil([&] { return !control.hasState(AccessibleState::enabled); },
                  QStringLiteral("%1 is disabled").arg(title));
    }
    EXPECT_TRUE(button(QStringLiteral("Close")).hasState(AccessibleState::enabled));
    provider().release();
    waitUntilPanelIsGone();
    expectReplaced(QStringLiteral("receive"));
}

TEST_F(PanelSessionTest, SecondSessionAfterTheFirst) {
    answerWith(QStringLiteral("receive"));
    pressHotKey();
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    waitUntilPanelIsGone();
    expectReplaced(QStringLiteral("receive"));

    answerWith(QStringLiteral("get"));
    pressHotKey();
    waitForPanel(QStringLiteral("receive"));
    click(QStringLiteral("Simplify"));
    EXPECT_TRUE(promptOf(waitForRequest(2)).endsWith(QStringLiteral("receive")));
    waitUntilPanelIsGone();
    expectReplaced(QStringLiteral("get"));
}

TEST_F(PanelSessionTest, AnOlderAnswerLeavesTheNewestPanelToWhoTypesInIt) {
    answerLater(QStringLiteral("receive"));
    pressHotKey();
    waitForPanel(wrong);
    tabTo(QStringLiteral("Fix My Grammar"));
    input().chord({XK_Return});
    waitForRequest();

    const QString note = QStringLiteral("Another text");
    const auto second = TestApplication::mousepad(desktop(), note);
    const Accessible other = second.focusedText();
    waitUntil([&] { return other.text() == note; }, QStringLiteral("the note is open"));
    selectByKeyboard(input(), note, QStringLiteral("text"));
    waitUntil([&] { return other.selectedText() == QStringLiteral("text"); },
              QStringLiteral("a word of the note is selected"));
    pressHotKey();
    const xcb_window_t panel = waitForPanel(QStringLiteral("text"));
    const Accessible field = instructionEditor();
    const QString begun = instruction.left(9);
    input().type(begun);
    waitUntil([&] { return field.text() == begun; }, QStringLiteral("the instruction is begun"));
    provider().release();
    // The work has ended when the panel can be used again.
    button(QStringLiteral("Generate"));
    expectReplaced(QStringLiteral("receive"));
    input().type(instruction.mid(9));
    waitUntil([&] { return field.text() == instruction; },
              QStringLiteral("the instruction is typed"));
    EXPECT_EQ(desktop().windows().active(), panel);
    EXPECT_EQ(other.text(), note);

    answerWith(QStringLiteral("poem"));
    click(QStringLiteral("Generate"));
    const QString prompt = promptOf(waitForRequest(2));
    EXPECT_TRUE(prompt.contains(instruction)) << prompt.toStdString();
    waitUntilPanelIsGone();
    EXPECT_EQ(other.text(), QStringLiteral("Another poem"));
}

} // namespace
} // namespace quillmender
