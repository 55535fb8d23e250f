#include "desktop/atspi/AtspiTest.h"
#include "desktop/atspi/ScriptedField.h"
#include "desktop/harness/AccessibilityBus.h"

#include <gmock/gmock.h>

namespace quillmender::atspi {
namespace {

using harness::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

const QString captured = QStringLiteral("one two three");
constexpr TextRange word{4, 3};
const QString answer = QStringLiteral("zwei");

/// A field whose user went on writing after the capture.
class EditedFieldTest : public AtspiTest {
  protected:
    void SetUp() override {
        AtspiTest::SetUp();
        harness::Desktop::Options options;
        options.windowManager = false;
        options.keyring = false;
        start(options);
        waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is there"));
        field_.emplace(desktop().accessibilityBus()->address(), captured);
    }

    /// The word in the middle is selected and captured.
    FocusedElementRef captureWord() {
        const FocusedElementRef element = makeElement();
        selectWord();
        EXPECT_EQ(selectedRange(element), word);
        field_->selectionStart = field_->selectionEnd = 0;
        return element;
    }

    void selectWord() {
        field_->selectionStart = int(word.location);
        field_->selectionEnd = int(word.location + word.length);
    }

    FocusedElementRef makeElement() {
        ElementTraits traits;
        traits.object = {field_->service(), ScriptedField::path()};
        traits.states = StateSet({1U << uint(State::editable), 0});
        traits.interfaces = {QLatin1String(protocol::text), QLatin1String(protocol::editableText)};
        return std::make_shared<const TextElement>(traits, Toolkit::qt,
                                                   std::make_shared<CallBudget>());
    }

    QString selectedNow() const {
        return field_->text.mid(field_->selectionStart,
                                field_->selectionEnd - field_->selectionStart);
    }

    std::optional<ScriptedField> field_;
};

TEST_F(EditedFieldTest, NothingSelectedIsNoRange) {
    const FocusedElementRef element = makeElement();
    EXPECT_EQ(selectedRange(element), std::nullopt);
    field_->selectionStart = field_->selectionEnd = 5;
    EXPECT_EQ(selectedRange(element), std::nullopt);
}

TEST_F(EditedFieldTest, WordIsReplacedWhereItIsNow) {
    struct Case {
        const char *edited;
        const char *written;
    };
    for (const Case &each : {
             Case{"one two three", "one zwei three"},
             Case{"zero one two three", "zero one zwei three"},
             Case{"one to two three", "one to zwei three"},
             Case{"two three", "zwei three"},
             Case{"one two three four", "one zwei three four"},
             Case{"one two too", "one zwei too"},
         }) {
        SCOPED_TRACE(each.edited);
        field_->text = captured;
        const FocusedElementRef element = captureWord();
        field_->text = QString::fromLatin1(each.edited);
        EXPECT_EQ(replace(element, word, answer).outcome, Replacement::Outcome::done);
        EXPECT_EQ(field_->text, QString::fromLatin1(each.written));
        EXPECT_EQ(selectedNow(), QString()) << "the user's next key would take it away";
    }
}

TEST_F(EditedFieldTest, AnswerIsSelectedWhereTheUserHasWaited) {
    const FocusedElementRef element = captureWord();
    selectWord();
    EXPECT_EQ(replace(element, word, answer).outcome, Replacement::Outcome::done);
    EXPECT_EQ(field_->text, QStringLiteral("one zwei three"));
    EXPECT_EQ(selectedNow(), answer);
}

TEST_F(EditedFieldTest, CaretThatTheUserHasMovedStays) {
    const FocusedElementRef element = captureWord();
    field_->selectionStart = field_->selectionEnd = 3;
    EXPECT_EQ(replace(element, word, answer).outcome, Replacement::Outcome::done);
    EXPECT_EQ(field_->text, QStringLiteral("one zwei three"));
    EXPECT_EQ(selectedNow(), QString());
}

TEST_F(EditedFieldTest, TextThatTheUserHasEditedElsewhereIsNotSelectedIn) {
    const FocusedElementRef element = captureWord();
    field_->text.append(QStringLiteral(" four"));
    selectWord();
    EXPECT_EQ(replace(element, word, answer).outcome, Replacement::Outcome::done);
    EXPECT_EQ(field_->text, QStringLiteral("one zwei three four"));
    EXPECT_NE(selectedNow(), answer) << "who edits has been there meanwhile";
}

TEST_F(EditedFieldTest, WhatIsTypedDuringTheWriteIsNotSelectedAway) {
    const FocusedElementRef element = captureWord();
    selectWord();
    field_->insert = [&](qsizetype position, const QString &added) {
        field_->text.insert(position, added);
        field_->text.append(QStringLiteral("!"));
    };
    EXPECT_EQ(replace(element, word, answer).outcome, Replacement::Outcome::done);
    EXPECT_EQ(field_->text, QStringLiteral("one zwei three!"));
    EXPECT_NE(selectedNow(), answer);
}

TEST_F(EditedFieldTest, EditedWordIsLeftAlone) {
    for (const char *edited : {"one tuo three", "1 two 3", "one three", "vier", ""}) {
        SCOPED_TRACE(edited);
        field_->text = captured;
        const FocusedElementRef element = captureWord();
        field_->text = QString::fromLatin1(edited);
        const Replacement replaced = replace(element, word, answer);
        EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
        expectReasonWithout(replaced, {captured, answer, field_->text});
        EXPECT_EQ(field_->text, QString::fromLatin1(edited));
        EXPECT_THAT(field_->calls, IsEmpty());
    }
}

TEST_F(EditedFieldTest, WordIsSelectedWhereItIsNow) {
    for (const char *edited : {"one two three", "zero one two three", "two three", "one two"}) {
        SCOPED_TRACE(edited);
        field_->text = captured;
        const FocusedElementRef element = captureWord();
        field_->text = QString::fromLatin1(edited);
        EXPECT_EQ(select(element, word), PasteTarget::selected);
        EXPECT_EQ(selectedNow(), QStringLiteral("two"));
        EXPECT_EQ(field_->selectionStart, field_->text.indexOf(QStringLiteral("two")));
    }
}

TEST_F(EditedFieldTest, OtherWordsInItsPlaceAreAnotherTarget) {
    for (const char *edited : {"one tuo three", "one three", "something quite different"}) {
        SCOPED_TRACE(edited);
        field_->text = captured;
        const FocusedElementRef element = captureWord();
        field_->text = QString::fromLatin1(edited);
        EXPECT_EQ(select(element, word), PasteTarget::another);
        EXPECT_EQ(selectedNow(), QString());
    }
}

TEST_F(EditedFieldTest, TextTooShortForTheRangeIsGone) {
    for (const char *edited : {"", "one", "one tw"}) {
        SCOPED_TRACE(edited);
        field_->text = captured;
        const FocusedElementRef element = captureWord();
        field_->text = QString::fromLatin1(edited);
        EXPECT_EQ(select(element, word), PasteTarget::gone);
        EXPECT_EQ(selectedNow(), QString());
    }
}

TEST_F(EditedFieldTest, KeyBetweenLengthAndTextIsNoObstacle) {
    const FocusedElementRef element = captureWord();
    int keys = 2;
    field_->whenCounted = [&] {
        if (keys-- > 0)
            field_->text.append(QStringLiteral("!"));
    };
    EXPECT_EQ(replace(element, word, answer).outcome, Replacement::Outcome::done);
    EXPECT_EQ(field_->text, QStringLiteral("one zwei three!!"));
}

TEST_F(EditedFieldTest, TextThatNeverFitsItsLengthIsLeftAlone) {
    const FocusedElementRef element = captureWord();
    field_->whenCounted = [&] { field_->text.append(QStringLiteral("!")); };
    const Replacement replaced = replace(element, word, answer);
    EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
    EXPECT_THAT(field_->calls, IsEmpty());
}

TEST_F(EditedFieldTest, WordsThatAKeyTakesWhileTheyAreSelectedAreGone) {
    const FocusedElementRef element = captureWord();
    field_->whenSelected = [&] {
        field_->text.replace(word.location, word.length, QStringLiteral("x"));
        field_->selectionStart = field_->selectionEnd = 5;
    };
    EXPECT_EQ(select(element, word), PasteTarget::gone);
}

TEST_F(EditedFieldTest, RangeOutsideTheTextIsRefused) {
    const FocusedElementRef element = captureWord();
    for (const TextRange &range : {TextRange{4, 100}, TextRange{100, 1}, TextRange{-1, 3}}) {
        const Replacement replaced = replace(element, range, answer);
        EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
        expectReasonWithout(replaced, {captured, answer});
    }
    EXPECT_EQ(select(element, {4, 100}), PasteTarget::gone);
    EXPECT_EQ(field_->text, captured);
    EXPECT_THAT(field_->calls, IsEmpty());
}

TEST_F(EditedFieldTest, RangeThatSplitsACharacterIsRefused) {
    field_->text = QStringLiteral("e\u0301 \U0001F468\u200D\U0001F469 x");
    const FocusedElementRef element = makeElement();
    for (const TextRange &range : {TextRange{0, 1}, TextRange{3, 1}, TextRange{3, 2}}) {
        const Replacement replaced = replace(element, range, answer);
        EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
        expectReasonWithout(replaced, {field_->text, answer});
    }
    EXPECT_THAT(field_->calls, IsEmpty());
}

TEST_F(EditedFieldTest, CharacterThatTheEditMadeLongerIsRefused) {
    const FocusedElementRef element = captureWord();
    field_->text = QStringLiteral("one two\u0301 three");
    const Replacement replaced = replace(element, word, answer);
    EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
    expectReasonWithout(replaced, {field_->text, answer});
    EXPECT_THAT(field_->calls, IsEmpty());
}

TEST_F(EditedFieldTest, WhatIsSelectedByHandWhileTheWriteIsUnderWayKeepsTheOutcome) {
    const FocusedElementRef element = captureWord();
    field_->obeysSelection = false;
    EXPECT_EQ(replace(element, word, answer).outcome, Replacement::Outcome::done);
    EXPECT_EQ(field_->text, QStringLiteral("one zwei three"));
    EXPECT_THAT(field_->calls,
                ElementsAre(QStringLiteral("DeleteText"), QStringLiteral("InsertText")));
}

/// The same in a real editor, with keys.
class EditedLetterTest : public AtspiTest {
  protected:
    FocusReading openLetter() {
        start();
        editor_.emplace(harness::TestApplication::mousepad(desktop(), captured));
        return waitForValue(captured);
    }

    void type(const QString &text) {
        const QString before = shown();
        desktop().input().type(text);
        waitUntil([&] { return shown().size() == before.size() + text.size(); },
                  QStringLiteral("the text is typed"));
    }

    QString shown() const { return editor_->focusedText().text(); }

    std::optional<harness::TestApplication> editor_;
};

TEST_F(EditedLetterTest, WholeFieldWithMoreBesideItIsReplacedAlone) {
    const FocusReading reading = openLetter();
    const TextRange whole{0, captured.size()};
    type(QStringLiteral("dear "));
    EXPECT_EQ(replace(reading.element, whole, answer).outcome, Replacement::Outcome::done);
    EXPECT_EQ(shown(), QStringLiteral("dear zwei"));
}

TEST_F(EditedLetterTest, WholeFieldWithMoreBehindItIsReplacedAlone) {
    const FocusReading reading = openLetter();
    const TextRange whole{0, captured.size()};
    ASSERT_TRUE(editor_->focusedText().setCaretOffset(int(captured.size())));
    type(QStringLiteral(" four"));
    EXPECT_EQ(select(reading.element, whole), PasteTarget::selected);
    waitForSelection(captured);
    EXPECT_EQ(replace(reading.element, whole, answer).outcome, Replacement::Outcome::done);
    EXPECT_EQ(shown(), QStringLiteral("zwei four"));
}

TEST_F(EditedLetterTest, WordThatWasTypedIntoIsLeftAlone) {
    openLetter();
    ASSERT_TRUE(editor_->focusedText().select(4, 7));
    const FocusReading reading = waitForSelection(QStringLiteral("two"));
    ASSERT_EQ(reading.selectedRange, word);
    ASSERT_TRUE(editor_->focusedText().setCaretOffset(5));
    type(QStringLiteral("x"));
    const Replacement replaced = replace(reading.element, word, answer);
    EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
    expectReasonWithout(replaced, {captured, answer, QStringLiteral("txwo")});
    EXPECT_EQ(select(reading.element, word), PasteTarget::another);
    EXPECT_EQ(shown(), QStringLiteral("one txwo three"));
}

} // namespace
} // namespace quillmender::atspi
