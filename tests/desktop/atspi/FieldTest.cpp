#include "desktop/atspi/AtspiTest.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <X11/keysym.h>

namespace quillmender::atspi {
namespace {

using harness::TestApplication;
using harness::waitUntil;

class FieldTest : public AtspiTest {
  protected:
    void selectAll() { desktop().input().chord({XK_Control_L, XK_a}); }

    void expectNoText(const FocusReading &reading) {
        EXPECT_EQ(reading.selectedText, std::nullopt);
        EXPECT_EQ(reading.selectedRange, std::nullopt);
        EXPECT_EQ(reading.value, std::nullopt);
    }

    void expectRefused(const FocusedElementRef &element, TextRange range) {
        const Replacement replaced = replace(element, range, QStringLiteral("Xylophon"));
        EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
        expectReasonWithout(replaced, {QStringLiteral("Xylophon")});
    }
};

TEST_F(FieldTest, PasswordIsNeverRead) {
    start();
    const TestApplication application = TestApplication::sampleEditor(
        desktop(), QStringLiteral("password"), QStringLiteral("correct horse"));
    const FocusReading unselected = waitForFocus(FocusContext::Role::password);
    expectNoText(unselected);
    selectAll();
    waitUntil([&] { return application.focusedText().selection().has_value(); },
              QStringLiteral("the password is selected"));
    const FocusReading reading = waitForFocus(FocusContext::Role::password);
    expectNoText(reading);
    EXPECT_EQ(selectedRange(reading.element), std::nullopt);
    expectRefused(reading.element, {0, 1});
    EXPECT_EQ(select(reading.element, {0, 1}), PasteTarget::unknown);
}

TEST_F(FieldTest, PasswordOfABrowserIsNeverRead) {
    start();
    const TestApplication application = TestApplication::chromium(
        desktop(), QStringLiteral("<input type=password value=secret autofocus>"));
    waitForFocus(FocusContext::Role::password);
    selectAll();
    const FocusReading reading = waitForFocus(FocusContext::Role::password);
    expectNoText(reading);
    EXPECT_EQ(selectedRange(reading.element), std::nullopt);
}

TEST_F(FieldTest, TerminalOffTheBusGivesItsPrimarySelection) {
    start();
    frontmost().terminal = true;
    const TestApplication xterm = TestApplication::xterm(desktop(), QStringLiteral("onelongword"));
    expectNoText(waitForFocus(FocusContext::Role::terminal));
    FocusReading reading;
    waitUntil(
        [&] {
            desktop().input().doubleClick(xterm.geometry().topLeft() + QPoint(30, 10));
            reading = read();
            return reading.selectedText == QStringLiteral("onelongword");
        },
        QStringLiteral("the word is selected"));
    EXPECT_EQ(reading.value, std::nullopt);
    EXPECT_EQ(reading.selectedRange, std::nullopt);
    EXPECT_EQ(selectedRange(reading.element), std::nullopt);
    expectRefused(reading.element, {0, 1});
}

TEST_F(FieldTest, BrowserTextAreaIsReadAndNeverWritten) {
    start();
    const QString content = QStringLiteral("one \U0001F600\U0001F680 two \U0001F389 three");
    const TestApplication application = TestApplication::chromium(
        desktop(), QStringLiteral("<textarea autofocus rows=9>%1</textarea>").arg(content));
    waitUntil([&] { return application.focusedText().text() == content; },
              QStringLiteral("the text area has the focus"));
    // A browser hides some selections of such a text: without one it cannot be told whether the
    // whole is meant.
    expectNoText(waitForFocus());

    desktop().input().chord({XK_Control_L, XK_End});
    desktop().input().chord({XK_Control_L, XK_Shift_L, XK_Left});
    EXPECT_EQ(waitForSelection(QStringLiteral("three")).selectedRange,
              (TextRange{content.indexOf(QStringLiteral("three")), 5}));

    selectAll();
    const FocusReading reading = waitForSelection(content);
    EXPECT_EQ(reading.selectedRange, (TextRange{0, content.size()}));

    expectRefused(reading.element, {0, content.size()});
    EXPECT_EQ(application.focusedText().text(), content);
}

TEST_F(FieldTest, BrowserThatWasThereBeforeIsRead) {
    startDesktop({});
    const TestApplication application =
        TestApplication::chromium(desktop(), QStringLiteral("<textarea autofocus>late</textarea>"));
    adopt();
    const FocusReading reading = waitForValue(QStringLiteral("late"));
    select(reading.element, {1, 2});
    waitForSelection(QStringLiteral("at"));
}

TEST_F(FieldTest, TextWithEmbeddedObjectsIsRefused) {
    start();
    const QString content = QStringLiteral("one \uFFFC two");
    const TestApplication application =
        TestApplication::sampleEditor(desktop(), QStringLiteral("line"), content);
    const FocusReading whole = waitForFocus();
    EXPECT_EQ(whole.value, std::nullopt);
    expectRefused(whole.element, {0, content.size()});
    EXPECT_EQ(application.focusedText().text(), content);

    desktop().input().chord({XK_End});
    desktop().input().chord({XK_Control_L, XK_Shift_L, XK_Left});
    const FocusReading reading = waitForSelection(QStringLiteral("two"));
    EXPECT_EQ(reading.selectedRange, (TextRange{6, 3}));
    expectRefused(reading.element, {6, 3});
    EXPECT_EQ(application.focusedText().text(), content);

    selectAll();
    waitUntil([&] { return application.focusedText().selectedText() == content; },
              QStringLiteral("the selection is more than text"));
    expectNoText(waitForFocus());
}

TEST_F(FieldTest, OnlyTheFrontmostApplicationCounts) {
    start();
    const TestApplication behind =
        TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), QStringLiteral("behind"));
    waitForValue(QStringLiteral("behind"));

    const TestApplication front = TestApplication::xterm(desktop());
    EXPECT_EQ(focusedElement(), nullptr);
    EXPECT_EQ(record().role, FocusContext::Role::unknown);

    frontmost().pretend(QCoreApplication::applicationPid());
    EXPECT_EQ(focusedElement(), nullptr);
    // The window behind has been told that it is no longer active.
    frontmost().pretend(0);
    waitUntil([&] { return focusedElement() == nullptr; }, QStringLiteral("nothing has the focus"));
    frontmost().pretended = RunningApplicationRef();
    EXPECT_EQ(focusedElement(), nullptr);
}

TEST_F(FieldTest, TextWithoutTheFocusIsNoPlaceToPaste) {
    start();
    const QString words = QStringLiteral("first second");
    const TestApplication application = TestApplication::mousepad(desktop(), words);
    waitForValue(words);
    desktop().input().chord({XK_Control_L, XK_a});
    const FocusReading reading = waitForSelection(words);
    EXPECT_EQ(select(reading.element, {0, words.size()}), PasteTarget::selected);
    desktop().input().chord({XK_Control_L, XK_f});
    waitUntil([&] { return select(reading.element, {0, words.size()}) == PasteTarget::another; },
              QStringLiteral("the entry of the search has the focus"));
    desktop().input().chord({XK_Escape});
    waitUntil([&] { return select(reading.element, {0, words.size()}) == PasteTarget::selected; },
              QStringLiteral("the text has the focus again"));
}

class ActiveWindowTest : public FieldTest, public testing::WithParamInterface<const char *> {};

TEST_P(ActiveWindowTest, IsReadThoughTheWindowSystemDoesNotTellIt) {
    start();
    frontmost().pretended = RunningApplicationRef();
    const std::string kind = GetParam();
    const QString sample = QStringLiteral("words");
    const TestApplication application =
        kind == "mousepad" ? TestApplication::mousepad(desktop(), sample)
        : kind == "gtk4"
            ? TestApplication::gnomeTextEditor(desktop(), sample)
            : TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), sample);
    const FocusReading reading = waitForValue(sample);
    ASSERT_NE(reading.application, nullptr);
    EXPECT_EQ(reading.application->processId(), application.pid());
}

INSTANTIATE_TEST_SUITE_P(Sources, ActiveWindowTest, testing::Values("mousepad", "gtk4", "qt"),
                         [](const auto &chosen) { return std::string(chosen.param); });

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
    waitForValue(sample);
    selectAll();
    waitForSelection(sample);

    const TestApplication panel = TestApplication::xterm(desktop());
    frontmost().pretend(source.pid());
    const FocusReading after = read();
    ASSERT_NE(after.element, nullptr);
    EXPECT_EQ(after.selectedText, sample);
    EXPECT_EQ(after.selectedRange, (TextRange{0, sample.size()}));
}

INSTANTIATE_TEST_SUITE_P(Sources, CaptureAgainTest,
                         testing::Values("mousepad", "gtk4", "qt", "browser"),
                         [](const auto &chosen) { return std::string(chosen.param); });

TEST_F(FieldTest, StoppedApplicationGivesNothingAndIsAskedOnce) {
    start();
    TestApplication application =
        TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), QStringLiteral("words"));
    const FocusReading before = waitForValue(QStringLiteral("words"));
    application.process().suspend();
    EXPECT_EQ(selectedRange(before.element), std::nullopt);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(selectedRange(before.element), std::nullopt);
    const qint64 afterTheFirst = timer.elapsed();
    expectRefused(before.element, {0, 5});
    EXPECT_EQ(select(before.element, {0, 5}), PasteTarget::unknown);
    const FocusReading stopped = read();
    EXPECT_EQ(stopped.element, nullptr);
    expectNoText(stopped);
    application.process().resume();
    waitForValue(QStringLiteral("words"));
    RecordProperty("afterTheFirstMs", int(afterTheFirst));
}

} // namespace
} // namespace quillmender::atspi
