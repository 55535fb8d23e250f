#include "desktop/atspi/AtspiTest.h"

#include <QCoroTask>

#include <X11/keysym.h>

namespace quillmender {
namespace {

using harness::Desktop;
using harness::TestApplication;
using harness::waitUntil;

struct Editor {
    const char *name;
    TestApplication (*start)(Desktop &desktop, const QString &text);
    int undoSteps; ///< that bring the text back after a write; 0 when there is no such thing
    bool severalLines;
};

TestApplication startPlain(Desktop &desktop, const QString &text) {
    return TestApplication::sampleEditor(desktop, QStringLiteral("plain"), text);
}

TestApplication startLine(Desktop &desktop, const QString &text) {
    return TestApplication::sampleEditor(desktop, QStringLiteral("line"), text);
}

class EditorTest : public AtspiTest, public testing::WithParamInterface<Editor> {
  protected:
    void open(const QString &text) {
        start();
        application_ = std::make_unique<TestApplication>(GetParam().start(desktop(), text));
        element = waitForElementHolding(text);
    }

    void selectLastWord() {
        const xcb_keysym_t end = XK_End;
        if (GetParam().severalLines)
            desktop().input().chord({XK_Control_L, end});
        else
            desktop().input().chord({end});
        desktop().input().chord({XK_Control_L, XK_Shift_L, XK_Left});
        waitUntil([&] { return text(element, attribute::selectedText).has_value(); },
                  QStringLiteral("a word is selected"));
    }

    AccessibilityElementRef element;
    std::unique_ptr<TestApplication> application_;
};

const QString sample =
    QStringLiteral("h\u00e9llo \U0001F600 w\u00f6rld \u6f22\u5b57 \U0001F680 last");
const QString changed = QStringLiteral(
    "h\u00e9llo \U0001F600 w\u00f6rld \u6f22\u5b57 \U0001F680 zw\u00f6lf \U0001F389!");

TEST_P(EditorTest, SelectionIsReadInUtf16) {
    open(sample);
    EXPECT_EQ(get(element, attribute::selectedText).error, AccessibilityError::noValue);
    selectLastWord();
    EXPECT_EQ(text(element, attribute::selectedText), QStringLiteral("last"));
    EXPECT_EQ(range(element), (TextRange{sample.indexOf(QStringLiteral("last")), 4}));
    EXPECT_EQ(text(element, attribute::value), sample);
}

TEST_P(EditorTest, RangeIsReadWithoutTheTextBefore) {
    open(sample);
    selectLastWord();
    EXPECT_EQ(range(element), (TextRange{sample.indexOf(QStringLiteral("last")), 4}));
}

TEST_P(EditorTest, WriteReplacesSelectsAndCanBeUndone) {
    open(sample);
    selectLastWord();
    ASSERT_EQ(text(element, attribute::value), sample);
    ASSERT_EQ(set(element, attribute::value, changed), AccessibilityError::success);
    EXPECT_EQ(application_->focusedText().text(), changed);
    EXPECT_EQ(text(element, attribute::value), changed);

    const QString inserted = QStringLiteral("zw\u00f6lf \U0001F389!");
    const TextRange place{changed.indexOf(inserted), inserted.size()};
    EXPECT_EQ(set(element, attribute::selectedTextRange, place), AccessibilityError::success);
    EXPECT_EQ(range(element), place);
    EXPECT_EQ(text(element, attribute::selectedText), inserted);

    for (int step = 0; step < GetParam().undoSteps; ++step) {
        const QString before = text(element, attribute::value).value_or(QString());
        desktop().input().chord({XK_Control_L, XK_z});
        waitUntil([&] { return text(element, attribute::value) != before; },
                  QStringLiteral("a step is undone"));
    }
    if (GetParam().undoSteps > 0) {
        EXPECT_EQ(text(element, attribute::value), sample);
    }
}

TEST_P(EditorTest, WholeFieldIsReplacedAndEmptied) {
    open(sample);
    ASSERT_EQ(text(element, attribute::value), sample);
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("\U0001F600")),
              AccessibilityError::success);
    EXPECT_EQ(set(element, attribute::value, QString()), AccessibilityError::success);
    EXPECT_EQ(text(element, attribute::value), QString());
    EXPECT_EQ(range(element), (TextRange{0, 0}));
    EXPECT_EQ(set(element, attribute::value, sample), AccessibilityError::success);
    EXPECT_EQ(text(element, attribute::value), sample);
}

TEST_P(EditorTest, WriteStopsWhenTheUserTypedMeanwhile) {
    open(sample);
    ASSERT_EQ(text(element, attribute::value), sample);
    desktop().input().type(QStringLiteral("x"));
    waitUntil([&] { return application_->focusedText().text() != sample; },
              QStringLiteral("the letter is typed"));
    const QString typed = application_->focusedText().text();
    EXPECT_NE(set(element, attribute::value, changed), AccessibilityError::success);
    EXPECT_EQ(application_->focusedText().text(), typed);
}

TEST_P(EditorTest, TextsThatCannotTravelAreRefused) {
    open(sample);
    ASSERT_EQ(text(element, attribute::value), sample);
    for (const QString &bad :
         {QStringLiteral("a\uFFFCb"), QString(QChar(u'\0')), QString(QChar(0xd83d))})
        EXPECT_EQ(set(element, attribute::value, bad), AccessibilityError::illegalArgument);
    EXPECT_EQ(application_->focusedText().text(), sample);
}

TEST_P(EditorTest, RangeIsSelectedAgainBeforeAPaste) {
    open(sample);
    const TextRange whole{0, sample.size()};
    QCoro::waitFor(accessibility().selectBeforePaste(element, whole));
    EXPECT_EQ(text(element, attribute::selectedText), sample);
    EXPECT_EQ(range(element), whole);
    EXPECT_EQ(set(element, attribute::selectedTextRange, TextRange{0, sample.size() + 1}),
              AccessibilityError::illegalArgument);
    EXPECT_EQ(range(element), whole);
}

TEST_P(EditorTest, FocusIsFoundWithoutHavingSeenItsEvent) {
    startDesktop({});
    const TestApplication application = GetParam().start(desktop(), sample);
    application.focusedText();
    adopt();
    element = waitForFocusedElement();
    EXPECT_EQ(text(element, attribute::value), sample);
}

INSTANTIATE_TEST_SUITE_P(Applications, EditorTest,
                         testing::Values(Editor{"Mousepad", &TestApplication::mousepad, 2, true},
                                         Editor{"Gedit", &TestApplication::gedit, 2, true},
                                         Editor{"GnomeTextEditor",
                                                &TestApplication::gnomeTextEditor, 2, true},
                                         Editor{"QtPlainText", &startPlain, 2, true},
                                         Editor{"QtLine", &startLine, 0, false}),
                         [](const auto &chosen) { return std::string(chosen.param.name); });

} // namespace
} // namespace quillmender
