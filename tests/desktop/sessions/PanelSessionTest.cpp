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

    TestApplication &editor() { return *editor_; }
    const Accessible &text() const { return *text_; }

    void select(const QString &word) {
        selectByKeyboard(input(), letter, word);
        waitUntil([&] { return text().selectedText() == word; },
                  QStringLiteral("%1 is selected").arg(word));
    }

    Accessible instructionEditor() {
        return desktop().accessible().waitFor(program().pid(), QStringLiteral("text"),
                                              QStringLiteral("Generate From Prompt"));
    }

    /// By name.
    void waitUntilFocused(const QString &name) {
        waitUntil(
            [&] {
                return desktop()
                    .accessible()
                    .find(program().pid(),
                          [&](const Accessible &widget) {
                              return widget.name() == name &&
                                     widget.hasState(AccessibleState::focused);
                          })
                    .has_value();
            },
            QStringLiteral("%1 has the focus").arg(name));
    }

    /// Sees what the server says to the panel besides.
    void waitUntilRepeated(xcb_window_t panel) {
        constexpr int often = 5;
        harness::XcbConnection watcher(desktop().display());
        constexpr quint32 presses = XCB_EVENT_MASK_KEY_PRESS;
        xcb_change_window_attributes(watcher.get(), panel, XCB_CW_EVENT_MASK, &presses);
        watcher.roundTrip();
        int seen = 0;
        waitUntil(
            [&] {
                using Event = harness::XcbPointer<xcb_generic_event_t>;
                while (const Event event{xcb_poll_for_event(watcher.get())})
                    seen += (event->response_type & 0x7f) == XCB_KEY_PRESS ? 1 : 0;
                return seen >= often;
            },
            QStringLiteral("the held key repeats into the panel"));
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

TEST_F(PanelSessionTest, TheFirstActionBySpaceAlone) {
    answerWith(QStringLiteral("receive"));
    pressHotKey();
    waitForPanel(wrong);
    waitUntilFocused(QStringLiteral("Formalize"));
    input().chord({XK_space});
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    waitUntilPanelIsGone();
    expectReplaced(QStringLiteral("receive"));
}

TEST_F(PanelSessionTest, ArrowsReachAnActionAndWhatIsTypedTheInstruction) {
    pressHotKey();
    waitForPanel(wrong);
    waitUntilFocused(QStringLiteral("Formalize"));
    for (const xcb_keysym_t key : {XK_Right, XK_Down})
        input().chord({key});
    waitUntilFocused(QStringLiteral("Translate to French"));
    typeInstruction();
    waitUntilFocused(QStringLiteral("Generate From Prompt"));
    EXPECT_EQ(provider().requests().size(), 0U);
}

TEST_F(PanelSessionTest, KeysThatAreHeldWhenItComesPressNothing) {
    // The server repeats them as a keyboard's.
    input().press(XK_Control_L);
    input().press(XK_Alt_L);
    input().press(XK_space);
    waitForPanel(wrong);
    waitUntilFocused(QStringLiteral("Formalize"));
    input().release(XK_Alt_L);
    input().release(XK_Control_L);
    input().release(XK_space);
    // What comes after it has been taken: nothing was before it.
    input().type(QStringLiteral("a b"));
    const Accessible field = instructionEditor();
    waitUntil([&] { return field.text() == QStringLiteral("a b"); },
              QStringLiteral("only what was typed is there"));
    EXPECT_EQ(provider().requests().size(), 0U);
}

TEST_F(PanelSessionTest, AKeyHeldInTheEditorDoesNothingInThePanel) {
    // The panel is called for by another way while the hand is on a key.
    for (const xcb_keysym_t key : {XK_Return, XK_space}) {
        text().setText(letter);
        editor().activate();
        input().press(key);
        program().activateAction(QStringLiteral("transform"));
        const xcb_window_t panel = waitForPanel();
        waitUntilFocused(QStringLiteral("Formalize"));
        waitUntilRepeated(panel);
        input().type(QStringLiteral("x"));
        const Accessible field = instructionEditor();
        waitUntil([&] { return field.text().contains(u'x'); }, QStringLiteral("x is typed"));
        EXPECT_EQ(field.text(), QStringLiteral("x"));
        input().release(key);
        EXPECT_EQ(provider().requests().size(), 0U);
        click(QStringLiteral("Close"));
        waitUntilPanelIsGone();
    }
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

} // namespace
} // namespace quillmender
