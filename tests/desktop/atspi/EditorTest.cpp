#include "desktop/atspi/AtspiTest.h"

#include <X11/keysym.h>

namespace quillmender::atspi {
namespace {

using harness::TestApplication;
using harness::waitUntil;

struct Editor {
    const char *name;
    TestApplication (*start)(harness::AnyDesktop &desktop, const QString &text);
    int undoSteps; ///< that bring the text back after a write; 0 when there is no such thing
    bool severalLines;
};

TestApplication startPlain(harness::AnyDesktop &desktop, const QString &text) {
    return TestApplication::sampleEditor(desktop, QStringLiteral("plain"), text);
}

TestApplication startLine(harness::AnyDesktop &desktop, const QString &text) {
    return TestApplication::sampleEditor(desktop, QStringLiteral("line"), text);
}

class EditorTest : public AtspiTest, public testing::WithParamInterface<Editor> {
  protected:
    FocusReading open(const QString &text) {
        start();
        application_ = std::make_unique<TestApplication>(GetParam().start(desktop(), text));
        waitForValue(text);
        // Some take no change while they are still loading.
        waitUntil(
            [&] {
                return application_->focusedText().hasState(harness::AccessibleState::editable);
            },
            QStringLiteral("the editor can be written in"));
        return waitForValue(text);
    }

    void press(xcb_keysym_t edge) {
        if (GetParam().severalLines)
            desktop().input().chord({XK_Control_L, edge});
        else
            desktop().input().chord({edge});
    }

    void selectLastWord() {
        press(XK_End);
        desktop().input().chord({XK_Control_L, XK_Shift_L, XK_Left});
    }

    void type(const QString &text) {
        const QString before = shown();
        desktop().input().type(text);
        waitUntil([&] { return shown().size() == before.size() + text.size(); },
                  QStringLiteral("the text is typed"));
    }

    QString shown() const { return application_->focusedText().text(); }

    /// Later releases of GTK 4 tell what is selected and let nobody else select.
    bool selectsForOthers() const {
        const harness::Accessible text = application_->focusedText();
        text.select(0, 1);
        return text.selection().has_value();
    }

    /// The range is selected wherever an application lets anybody select.
    testing::AssertionResult isSelected(const FocusedElementRef &element, TextRange range) {
        const std::optional<TextRange> found = selectedRange(element);
        if (found == range || (!found && !selectsForOthers()))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "it is not selected";
    }

    std::unique_ptr<TestApplication> application_;
};

const QString unchanged =
    QStringLiteral("h\u00e9llo \U0001F600 w\u00f6rld \u6f22\u5b57 \U0001F680 ");
const QString lastWord = QStringLiteral("last");
const QString sample = unchanged + lastWord;
const TextRange lastRange{unchanged.size(), lastWord.size()};
const QString inserted = QStringLiteral("zw\u00f6lf \U0001F389!");
const QString changed = unchanged + inserted;

TEST_P(EditorTest, SelectionIsReadInUtf16) {
    const FocusReading before = open(sample);
    EXPECT_EQ(before.selectedText, std::nullopt);
    EXPECT_EQ(before.selectedRange, std::nullopt);
    selectLastWord();
    const FocusReading reading = waitForSelection(lastWord);
    EXPECT_EQ(reading.selectedRange, lastRange);
    EXPECT_EQ(reading.value, std::nullopt);
    EXPECT_EQ(shown(), sample);
}

TEST_P(EditorTest, RangeIsReadWithoutTheTextBefore) {
    const FocusReading reading = open(sample);
    EXPECT_EQ(selectedRange(reading.element), std::nullopt);
    selectLastWord();
    waitUntil([&] { return selectedRange(reading.element).has_value(); },
              QStringLiteral("a word is selected"));
    EXPECT_EQ(selectedRange(reading.element), lastRange);
}

TEST_P(EditorTest, WriteReplacesSelectsAndCanBeUndone) {
    open(sample);
    selectLastWord();
    const FocusReading reading = waitForSelection(lastWord);
    ASSERT_EQ(reading.selectedRange, lastRange);
    ASSERT_EQ(replace(reading.element, lastRange, inserted).outcome, Replacement::Outcome::done);
    EXPECT_EQ(shown(), changed);

    const TextRange place{changed.indexOf(inserted), inserted.size()};
    EXPECT_TRUE(isSelected(reading.element, place));

    for (int step = 0; step < GetParam().undoSteps; ++step) {
        const QString before = shown();
        desktop().input().chord({XK_Control_L, XK_z});
        waitUntil([&] { return shown() != before; }, QStringLiteral("a step is undone"));
    }
    if (GetParam().undoSteps > 0) {
        EXPECT_EQ(shown(), sample);
    }
}

TEST_P(EditorTest, WholeFieldIsReplacedAndEmptied) {
    const FocusReading whole = open(sample);
    const QString face = QStringLiteral("\U0001F600");
    EXPECT_EQ(replace(whole.element, {0, sample.size()}, face).outcome, Replacement::Outcome::done);
    EXPECT_EQ(shown(), face);
    EXPECT_TRUE(isSelected(whole.element, {0, face.size()}));
    const FocusReading written = waitForFocus();
    EXPECT_EQ(replace(written.element, {0, face.size()}, QString()).outcome,
              Replacement::Outcome::done);
    EXPECT_EQ(shown(), QString());
    const FocusReading empty = waitForFocus();
    EXPECT_EQ(empty.value, std::nullopt);
    EXPECT_EQ(empty.selectedText, std::nullopt);
    EXPECT_EQ(selectedRange(empty.element), std::nullopt);
    EXPECT_EQ(replace(empty.element, {0, 0}, sample).outcome, Replacement::Outcome::done);
    EXPECT_EQ(shown(), sample);
}

TEST_P(EditorTest, WriteFollowsTheWordWhenTheUserTypedBeforeIt) {
    open(sample);
    selectLastWord();
    const FocusReading reading = waitForSelection(lastWord);
    press(XK_Home);
    type(QStringLiteral("so "));
    EXPECT_EQ(replace(reading.element, *reading.selectedRange, inserted).outcome,
              Replacement::Outcome::done);
    EXPECT_EQ(shown(), QStringLiteral("so ") + changed);
    type(QStringLiteral("x"));
    // A field of one line puts its caret where it was changed; nothing is selected there either.
    const QString atTheCaret = QStringLiteral("so x") + changed;
    const QString behindTheAnswer = QStringLiteral("so ") + changed + u'x';
    EXPECT_EQ(shown(), GetParam().severalLines ? atTheCaret : behindTheAnswer);
}

TEST_P(EditorTest, WriteStopsWhenTheUserTypedIntoTheWord) {
    open(sample);
    selectLastWord();
    const FocusReading reading = waitForSelection(lastWord);
    press(XK_End);
    desktop().input().chord({XK_Left});
    type(QStringLiteral("x"));
    const QString typed = shown();
    ASSERT_EQ(typed, unchanged + QStringLiteral("lasxt"));
    const Replacement replaced = replace(reading.element, *reading.selectedRange, inserted);
    EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
    expectReasonWithout(replaced, {sample, inserted, typed});
    EXPECT_EQ(select(reading.element, *reading.selectedRange), PasteTarget::another);
    EXPECT_EQ(shown(), typed);
}

TEST_P(EditorTest, TextsThatCannotTravelAreRefused) {
    const FocusReading reading = open(sample);
    for (const QString &bad :
         {QStringLiteral("a\uFFFCb"), QString(QChar(u'\0')), QString(QChar(0xd83d))}) {
        const Replacement replaced = replace(reading.element, {0, sample.size()}, bad);
        EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
        expectReasonWithout(replaced, {sample, bad});
    }
    EXPECT_EQ(shown(), sample);
}

TEST_P(EditorTest, RangeIsSelectedAgainBeforeAPaste) {
    const FocusReading reading = open(sample);
    const TextRange whole{0, sample.size()};
    const PasteTarget target = select(reading.element, whole);
    if (target != PasteTarget::selected) {
        EXPECT_EQ(target, PasteTarget::another);
        EXPECT_FALSE(selectsForOthers());
        return;
    }
    waitForSelection(sample);
    EXPECT_EQ(selectedRange(reading.element), whole);
    EXPECT_EQ(select(reading.element, {0, sample.size() + 1}), PasteTarget::gone);
    EXPECT_EQ(selectedRange(reading.element), whole);
}

TEST_P(EditorTest, FocusIsFoundWithoutHavingSeenItsEvent) {
    startDesktop({});
    const TestApplication application = GetParam().start(desktop(), sample);
    application.focusedText();
    adopt();
    waitForValue(sample);
}

INSTANTIATE_TEST_SUITE_P(BusApplications, EditorTest,
                         testing::Values(Editor{"Mousepad", &TestApplication::mousepad, 2, true},
                                         Editor{"Gedit", &TestApplication::gedit, 2, true},
                                         Editor{"GnomeTextEditor",
                                                &TestApplication::gnomeTextEditor, 2, true},
                                         Editor{"QtPlainText", &startPlain, 2, true},
                                         Editor{"QtLine", &startLine, 0, false}),
                         [](const auto &chosen) { return std::string(chosen.param.name); });

} // namespace
} // namespace quillmender::atspi
