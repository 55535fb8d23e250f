#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/TextKeys.h"

namespace quillmender {
namespace {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;

const QString wrong = QStringLiteral("recieve");
const QString right = QStringLiteral("receive");

/// The text is read through accessibility and cannot be written through it.
class WriteBackSessionTest : public SessionFixture {
  protected:
    TestApplication openPage(const QString &element) {
        TestApplication chromium = TestApplication::chromium(desktop(), element);
        waitUntil([&] { return chromium.title().startsWith(QStringLiteral("ready")); },
                  QStringLiteral("the element has the focus"));
        return chromium;
    }

    static QString textarea(const QString &text) {
        return QStringLiteral("<textarea autofocus rows=5 cols=60 oninput=\"document.title=value\" "
                              "onfocus=\"document.title='ready'\">%1</textarea>")
            .arg(text);
    }

    void expectTitle(const TestApplication &chromium, const QString &text) {
        waitUntil([&] { return chromium.title() == text + QStringLiteral(" - Chromium"); },
                  QStringLiteral("the page has \"%1\"").arg(text));
    }
};

TEST_F(WriteBackSessionTest, SelectionIsPastedWhereAccessibilityIsReadOnly) {
    start();
    const QString letter = QStringLiteral("Gr\u00fc\u00dfe \U0001F600: you recieve it.");
    const TestApplication chromium = openPage(textarea(letter));
    selectByKeyboard(input(), letter, wrong);
    waitUntilSelected(wrong);
    answerWith(right);

    pressHotKey();
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    waitUntilPanelIsGone();
    QString expected = letter;
    expectTitle(chromium, expected.replace(wrong, right));
    EXPECT_EQ(desktop().windows().active(), chromium.window());
    expectClipboardUntouched();
}

TEST_F(WriteBackSessionTest, WholeFieldIsReplacedByThePasteToo) {
    start();
    const QString letter = QStringLiteral("You recieve it tomorrow.");
    const TestApplication chromium = openPage(textarea(letter));
    answerWith(QStringLiteral("You will receive it tomorrow."));

    pressHotKey();
    waitForPanel(letter);
    EXPECT_TRUE(panelShows(QStringLiteral("Captured Field")));
    click(QStringLiteral("Fix My Grammar"));
    waitUntilPanelIsGone();
    expectTitle(chromium, QStringLiteral("You will receive it tomorrow."));
    expectClipboardUntouched();
}

/// The user goes on writing while the provider thinks.
class EditedSessionTest : public SessionFixture {
  protected:
    void open(const QString &letter) {
        start();
        editor_ = TestApplication::mousepad(desktop(), letter);
        text_ = editor_->focusedText();
        waitUntil([&] { return text_->text() == letter; }, QStringLiteral("the letter is open"));
        selectByKeyboard(input(), letter, wrong);
        waitUntil([&] { return text_->selectedText() == wrong; }, QStringLiteral("it is selected"));
        answerLater(right);
        pressHotKey();
        waitForPanel(wrong);
        click(QStringLiteral("Fix My Grammar"));
        waitForRequest();
        editor_->activate();
    }

    const Accessible &text() const { return *text_; }

    void waitForText(const QString &expected) {
        waitUntil([&] { return text().text() == expected; },
                  QStringLiteral("the editor has \"%1\"").arg(expected));
    }

  private:
    std::optional<TestApplication> editor_;
    std::optional<Accessible> text_;
};

TEST_F(EditedSessionTest, RangeThatIsGoneMakesThePasteGoToTheCaret) {
    open(QStringLiteral("Hello, you recieve it tomorrow."));
    input().chord({XK_Control_L, XK_a});
    input().type(QStringLiteral("New: "));
    waitForText(QStringLiteral("New: "));
    provider().release();
    waitUntilPanelIsGone();
    waitForText(QStringLiteral("New: receive"));
    expectClipboardUntouched();
}

TEST_F(EditedSessionTest, TextTypedElsewhereIsKept) {
    open(QStringLiteral("Hello, you recieve it"));
    input().chord({XK_End});
    input().type(QStringLiteral(" tomorrow"));
    waitForText(QStringLiteral("Hello, you recieve it tomorrow"));
    provider().release();
    waitUntilPanelIsGone();
    EXPECT_EQ(text().text(), QStringLiteral("Hello, you receive it tomorrow"));
    // The next key is meant for where the user is.
    EXPECT_EQ(text().selectedText(), QString());
    expectClipboardNeverTaken();
}

} // namespace
} // namespace quillmender
