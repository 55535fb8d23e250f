#include "desktop/sessions/KeyRecorder.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/TextKeys.h"
#include "support/ProviderAnswers.h"

namespace quillmender {
namespace {

using harness::TestApplication;
using harness::waitUntil;
using test::ScriptedAnswer;

const QString wrong = QStringLiteral("recieve");
const QString letter = QStringLiteral("Hello, you recieve it.");
const QString nothingSelected =
    QStringLiteral("Select some text, or place the cursor inside a normal text field so "
                   "Quillmender can capture the whole field when possible.");

class FailureSessionTest : public SessionFixture {
  protected:
    /// Not scrolled out of sight under the header.
    void expectInView(const QString &text) {
        const auto edge = [&](const QString &name) {
            return desktop()
                .accessible()
                .waitFor(program().pid(), QStringLiteral("paragraph"), name)
                .extents();
        };
        const QString header =
            QStringLiteral("Transform the captured text and replace it in place.");
        EXPECT_GT(edge(text).top(), edge(header).bottom());
    }

    /// The first action fails with that message; the second, on the same capture, succeeds.
    void expectSecondActionToSucceedAfter(const ScriptedAnswer &failure, const QString &message) {
        start();
        const auto editor = TestApplication::mousepad(desktop(), letter);
        const harness::Accessible text = editor.focusedText();
        waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
        selectByKeyboard(input(), letter, wrong);
        waitUntil([&] { return text.selectedText() == wrong; }, QStringLiteral("it is selected"));
        provider().setAnswer(failure);

        pressHotKey();
        waitForPanel(wrong);
        click(QStringLiteral("Simplify"));
        waitForRequest();
        waitForPanel(message);
        expectInView(message);
        EXPECT_TRUE(panelShows(wrong));
        EXPECT_EQ(text.text(), letter);
        expectClipboardNeverTaken();

        answerWith(QStringLiteral("receive"));
        click(QStringLiteral("Fix My Grammar"));
        EXPECT_TRUE(promptOf(waitForRequest(2)).endsWith(wrong));
        waitUntilPanelIsGone();
        EXPECT_EQ(text.text(), QStringLiteral("Hello, you receive it."));
        EXPECT_EQ(text.selectedText(), QStringLiteral("receive"));
        expectClipboardNeverTaken();
    }
};

TEST_F(FailureSessionTest, RefusedKey) {
    const QString message = QStringLiteral("Incorrect API key provided.");
    expectSecondActionToSucceedAfter(ScriptedAnswer::http(401, test::errorBody(message)), message);
}

TEST_F(FailureSessionTest, ServerErrorInPlainText) {
    expectSecondActionToSucceedAfter(
        ScriptedAnswer::http(500, "the model has left the building", "text/plain"),
        QStringLiteral("the model has left the building"));
}

TEST_F(FailureSessionTest, NothingSelectedAnywhere) {
    start();
    KeyRecorder application(desktop());
    pressHotKey();
    waitForPanel(nothingSelected);
    EXPECT_TRUE(panelShows(QStringLiteral("No text captured yet.")));
    EXPECT_EQ(application.presses(), QStringList{QStringLiteral("Control+c")});
    EXPECT_FALSE(panelShows(QStringLiteral("Request Accessibility Access")));
    expectClipboardUntouched();
    EXPECT_TRUE(provider().requests().empty());

    click(QStringLiteral("Close"));
    waitUntilPanelIsGone();
    expectClipboardUntouched();
}

TEST_F(FailureSessionTest, EmptyEditor) {
    start();
    const auto editor = TestApplication::mousepad(desktop());
    const harness::Accessible text = editor.focusedText();
    pressHotKey();
    waitForPanel(nothingSelected);
    EXPECT_EQ(text.text(), QString());
    expectClipboardUntouched();
}

} // namespace
} // namespace quillmender
