#include "desktop/atspi/AtspiTest.h"

#include <QCoroTask>
#include <QElapsedTimer>

#include <X11/keysym.h>

namespace quillmender {
namespace {

using harness::TestApplication;
using harness::waitUntil;

class FieldTest : public AtspiTest {
  protected:
    void selectAll() { desktop().input().chord({XK_Control_L, XK_a}); }

    void waitForSelection(const AccessibilityElementRef &element, const QString &expected) {
        waitUntil([&] { return text(element, attribute::selectedText) == expected; },
                  QStringLiteral("the selection is read"));
    }
};

TEST_F(FieldTest, PasswordIsNeverRead) {
    start();
    const TestApplication application = TestApplication::sampleEditor(
        desktop(), QStringLiteral("password"), QStringLiteral("correct horse"));
    const auto element = waitForFocusedElement(FocusRecord::Role::password);
    selectAll();
    for (const char *name :
         {attribute::selectedText, attribute::value, attribute::selectedTextRange}) {
        const AttributeResult result = get(element, name);
        EXPECT_EQ(result.error, AccessibilityError::noValue);
        EXPECT_TRUE(std::holds_alternative<std::monostate>(result.value));
    }
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("x")),
              AccessibilityError::attributeUnsupported);
}

TEST_F(FieldTest, PasswordOfABrowserIsNeverRead) {
    start();
    const TestApplication application = TestApplication::chromium(
        desktop(), QStringLiteral("<input type=password value=secret autofocus>"));
    const auto element = waitForFocusedElement(FocusRecord::Role::password);
    selectAll();
    EXPECT_EQ(get(element, attribute::selectedText).error, AccessibilityError::noValue);
    EXPECT_EQ(get(element, attribute::value).error, AccessibilityError::noValue);
}

TEST_F(FieldTest, TerminalOffTheBusGivesItsPrimarySelection) {
    start();
    frontmost().terminal = true;
    const TestApplication xterm = TestApplication::xterm(desktop(), QStringLiteral("onelongword"));
    const auto element = waitForFocusedElement(FocusRecord::Role::terminal);
    EXPECT_EQ(get(element, attribute::selectedText).error, AccessibilityError::noValue);
    waitUntil(
        [&] {
            desktop().input().doubleClick(xterm.geometry().topLeft() + QPoint(30, 10));
            return text(element, attribute::selectedText) == QStringLiteral("onelongword");
        },
        QStringLiteral("the word is selected"));
    EXPECT_EQ(get(element, attribute::value).error, AccessibilityError::attributeUnsupported);
    EXPECT_EQ(get(element, attribute::selectedTextRange).error,
              AccessibilityError::attributeUnsupported);
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("x")),
              AccessibilityError::attributeUnsupported);
}

TEST_F(FieldTest, BrowserTextAreaIsReadAndNeverWritten) {
    start();
    const QString content = QStringLiteral("one \U0001F600\U0001F680 two \U0001F389 three");
    const TestApplication application = TestApplication::chromium(
        desktop(), QStringLiteral("<textarea autofocus rows=9>%1</textarea>").arg(content));
    waitUntil([&] { return application.focusedText().text() == content; },
              QStringLiteral("the text area has the focus"));
    const auto element = waitForFocusedElement();
    // A browser hides some selections of such a text: without one it cannot be told whether the
    // whole is meant.
    EXPECT_EQ(get(element, attribute::selectedText).error, AccessibilityError::cannotComplete);
    EXPECT_EQ(get(element, attribute::value).error, AccessibilityError::cannotComplete);

    desktop().input().chord({XK_Control_L, XK_End});
    desktop().input().chord({XK_Control_L, XK_Shift_L, XK_Left});
    waitForSelection(element, QStringLiteral("three"));
    EXPECT_EQ(range(element), (TextRange{content.indexOf(QStringLiteral("three")), 5}));

    selectAll();
    waitForSelection(element, content);
    EXPECT_EQ(range(element), (TextRange{0, content.size()}));

    ASSERT_EQ(text(element, attribute::value), content);
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("x")),
              AccessibilityError::attributeUnsupported);
    EXPECT_EQ(text(element, attribute::value), content);
}

TEST_F(FieldTest, BrowserThatWasThereBeforeIsRead) {
    startDesktop({});
    const TestApplication application =
        TestApplication::chromium(desktop(), QStringLiteral("<textarea autofocus>late</textarea>"));
    adopt();
    const auto element = waitForElementHolding(QStringLiteral("late"));
    QCoro::waitFor(accessibility().selectBeforePaste(element, {1, 2}));
    waitForSelection(element, QStringLiteral("at"));
}

TEST_F(FieldTest, TextWithEmbeddedObjectsIsRefused) {
    start();
    const TestApplication application = TestApplication::sampleEditor(
        desktop(), QStringLiteral("line"), QStringLiteral("one \uFFFC two"));
    const auto element = waitForFocusedElement();
    EXPECT_EQ(get(element, attribute::value).error, AccessibilityError::noValue);
    EXPECT_NE(set(element, attribute::value, QStringLiteral("one two")),
              AccessibilityError::success);
    EXPECT_EQ(application.focusedText().text(), QStringLiteral("one \uFFFC two"));

    desktop().input().chord({XK_End});
    desktop().input().chord({XK_Control_L, XK_Shift_L, XK_Left});
    waitForSelection(element, QStringLiteral("two"));
    EXPECT_EQ(range(element), (TextRange{6, 3}));

    selectAll();
    waitUntil(
        [&] {
            return get(element, attribute::selectedText).error ==
                   AccessibilityError::cannotComplete;
        },
        QStringLiteral("the selection is more than text"));
}

TEST_F(FieldTest, OnlyTheFrontmostApplicationCounts) {
    start();
    const TestApplication behind =
        TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), QStringLiteral("behind"));
    const auto element = waitForFocusedElement();
    ASSERT_EQ(text(element, attribute::value), QStringLiteral("behind"));

    const TestApplication front = TestApplication::xterm(desktop());
    EXPECT_EQ(focusedElement(), nullptr);
    EXPECT_EQ(record().role, FocusRecord::Role::unknown);

    frontmost().pretendedProcess = QCoreApplication::applicationPid();
    EXPECT_EQ(focusedElement(), nullptr);
    frontmost().pretendedProcess = 0;
    EXPECT_EQ(focusedElement(), nullptr);
}

TEST_F(FieldTest, ElementIsOfTheWindowThatItWasFoundIn) {
    class Window : public RunningApplication {};
    start();
    const auto source = std::make_shared<const Window>();
    const auto other = std::make_shared<const Window>();
    frontmost().pretendedApplication = source;
    const TestApplication application =
        TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), QStringLiteral("words"));
    const auto element = waitForFocusedElement();
    EXPECT_TRUE(element->isOf(source));
    EXPECT_FALSE(element->isOf(other));
}

class CaptureAgainTest : public FieldTest, public testing::WithParamInterface<const char *> {};

TEST_P(CaptureAgainTest, ElementIsTheOneThatHadTheFocus) {
    start();
    const QString sample = QStringLiteral("first second");
    const std::string kind = GetParam();
    const TestApplication source =
        kind == "mousepad" ? TestApplication::mousepad(desktop(), sample)
        : kind == "gtk4"   ? TestApplication::gnomeTextEditor(desktop(), sample)
        : kind == "browser"
            ? TestApplication::chromium(
                  desktop(), QStringLiteral("<textarea autofocus>%1</textarea>").arg(sample))
            : TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), sample);
    const auto before = waitForElementHolding(sample);
    selectAll();
    waitForSelection(before, sample);

    const TestApplication panel = TestApplication::xterm(desktop());
    frontmost().pretendedProcess = source.pid();
    const auto after = focusedElement();
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(text(after, attribute::selectedText), sample);
    EXPECT_EQ(range(after), (TextRange{0, sample.size()}));
}

INSTANTIATE_TEST_SUITE_P(Sources, CaptureAgainTest,
                         testing::Values("mousepad", "gtk4", "qt", "browser"),
                         [](const auto &chosen) { return std::string(chosen.param); });

TEST_F(FieldTest, StoppedApplicationGivesNothingAndIsAskedOnce) {
    start();
    TestApplication application =
        TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), QStringLiteral("words"));
    const auto element = waitForFocusedElement();
    ASSERT_EQ(text(element, attribute::value), QStringLiteral("words"));
    application.process().suspend();
    EXPECT_EQ(get(element, attribute::selectedText).error, AccessibilityError::cannotComplete);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(get(element, attribute::value).error, AccessibilityError::cannotComplete);
    EXPECT_EQ(get(element, attribute::selectedTextRange).error, AccessibilityError::noValue);
    const qint64 afterTheFirst = timer.elapsed();
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("other")), AccessibilityError::failure);
    EXPECT_EQ(focusedElement(), nullptr);
    application.process().resume();
    EXPECT_EQ(text(waitForFocusedElement(), attribute::value), QStringLiteral("words"));
    RecordProperty("afterTheFirstMs", int(afterTheFirst));
}

} // namespace
} // namespace quillmender
