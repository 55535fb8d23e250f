#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/TextKeys.h"

namespace quillmender {
namespace {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;

struct Editor {
    const char *name;
    TestApplication (*start)(harness::AnyDesktop &desktop, const QString &text);
};

TestApplication startPlain(harness::AnyDesktop &desktop, const QString &text) {
    return TestApplication::sampleEditor(desktop, QStringLiteral("plain"), text);
}

TestApplication startLine(harness::AnyDesktop &desktop, const QString &text) {
    return TestApplication::sampleEditor(desktop, QStringLiteral("line"), text);
}

const QString wrong = QStringLiteral("recieve");
const QString letter = QStringLiteral("Gr\u00fc\u00dfe \U0001F600\U0001F680: you recieve it.");

class AccessibilitySessionTest : public SessionFixture, public testing::WithParamInterface<Editor> {
  protected:
    void SetUp() override {
        SessionFixture::SetUp();
        start();
        editor_ = GetParam().start(desktop(), letter);
        text_ = editor_->focusedText();
        waitUntil([&] { return text_->text() == letter; }, QStringLiteral("the letter is open"));
    }

    const Accessible &text() const { return *text_; }

    void expectEditorActive() {
        waitUntil([&] { return desktop().windows().active() == editor_->window(); },
                  QStringLiteral("the editor has the focus again"));
    }

  private:
    std::optional<TestApplication> editor_;
    std::optional<Accessible> text_;
};

TEST_P(AccessibilitySessionTest, SelectionIsReplacedAndSelected) {
    const QString right = QStringLiteral("receive \U0001F389");
    answerWith(right);
    selectByKeyboard(input(), letter, wrong);
    waitUntil([&] { return text().selectedText() == wrong; }, QStringLiteral("it is selected"));

    pressHotKey();
    waitForPanel(wrong);
    EXPECT_TRUE(panelShows(QStringLiteral("Selected Text")));
    EXPECT_TRUE(panelShows(QStringLiteral("Using only the highlighted text.")));
    click(QStringLiteral("Fix My Grammar"));
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    waitUntilPanelIsGone();

    QString expected = letter;
    EXPECT_EQ(text().text(), expected.replace(wrong, right));
    EXPECT_EQ(text().selectedText(), right);
    expectEditorActive();
    expectClipboardNeverTaken();
}

TEST_P(AccessibilitySessionTest, WholeFieldIsReplacedAndSelected) {
    const QString answer = QStringLiteral("\U0001F44B You receive it, \u00e0 bient\u00f4t.");
    answerWith(answer);

    pressHotKey();
    waitForPanel(letter);
    EXPECT_TRUE(panelShows(QStringLiteral("Captured Field")));
    click(QStringLiteral("Formalize"));
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(letter));
    waitUntilPanelIsGone();

    EXPECT_EQ(text().text(), answer);
    // Later releases of GTK 4 let nobody else select.
    if (text().selectedText() != answer) {
        text().select(0, 1);
        EXPECT_EQ(text().selection(), std::nullopt);
    }
    expectEditorActive();
    expectClipboardNeverTaken();
}

INSTANTIATE_TEST_SUITE_P(
    Editors, AccessibilitySessionTest,
    testing::Values(Editor{"Mousepad", &TestApplication::mousepad},
                    Editor{"Gedit", &TestApplication::gedit},
                    Editor{"GnomeTextEditor", &TestApplication::gnomeTextEditor},
                    Editor{"QtPlainText", &startPlain}, Editor{"QtLine", &startLine}),
    [](const auto &chosen) { return std::string(chosen.param.name); });

} // namespace
} // namespace quillmender
