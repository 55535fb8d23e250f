#include "desktop/atspi/AccessibleProgram.h"
#include "desktop/atspi/AtspiTest.h"

#include <QCoroTask>

namespace quillmender::atspi {
namespace {

/// Which application is asked for, and which is in front.
class ReadingTest : public AtspiTest {
  protected:
    void SetUp() override {
        AtspiTest::SetUp();
        harness::Desktop::Options options;
        options.windowManager = false;
        options.keyring = false;
        start(options);
        program_.emplace(desktop(), QStringLiteral("words"));
        frontmost().pretend(program_->pid());
        front_ = *frontmost().pretended;
        ASSERT_EQ(waitForValue(QStringLiteral("words")).application, front_);
    }

    void expectElsewhere(const FocusReading &reading, const RunningApplicationRef &asked) {
        EXPECT_TRUE(reading.isElsewhere);
        EXPECT_EQ(reading.application, asked);
        EXPECT_EQ(reading.element, nullptr);
        EXPECT_EQ(reading.selectedText, std::nullopt);
        EXPECT_EQ(reading.selectedRange, std::nullopt);
        EXPECT_EQ(reading.value, std::nullopt);
        EXPECT_EQ(reading.chordContext, nullptr);
    }

    RunningApplicationRef front_;
    std::optional<AccessibleProgram> program_;
};

TEST_F(ReadingTest, AnotherApplicationIsElsewhereAndNobodyIsAsked) {
    const auto other = std::make_shared<const WindowApplication>(program_->pid() + 1);
    const auto task = focusedText().read(other);
    // Whoever asks on the bus waits for the answer.
    ASSERT_TRUE(task.isReady());
    expectElsewhere(read(other), other);
}

TEST_F(ReadingTest, AnotherWindowOfTheApplicationIsElsewhere) {
    const auto other = std::make_shared<const WindowApplication>(program_->pid(), 77);
    const auto task = focusedText().read(other);
    ASSERT_TRUE(task.isReady());
    expectElsewhere(read(other), other);
}

TEST_F(ReadingTest, ApplicationIsElsewhereWhenNobodyKnowsWhoIsInFront) {
    frontmost().pretended = RunningApplicationRef();
    expectElsewhere(read(front_), front_);
}

TEST_F(ReadingTest, FocusThatMovesMeanwhileIsElsewhere) {
    auto task = focusedText().read(front_);
    ASSERT_FALSE(task.isReady());
    frontmost().pretend(program_->pid() + 1);
    expectElsewhere(QCoro::waitFor(std::move(task)), front_);
}

TEST_F(ReadingTest, NoneInParticularIsTheOneInFront) {
    const FocusReading reading = read(nullptr);
    EXPECT_EQ(reading.application, front_);
    EXPECT_EQ(reading.value, QStringLiteral("words"));
    EXPECT_FALSE(reading.isElsewhere);
}

TEST_F(ReadingTest, BlankTextIsNoText) {
    program_.emplace(desktop(), QStringLiteral(" \n "));
    frontmost().pretend(program_->pid());
    EXPECT_EQ(waitForFocus().value, std::nullopt);
}

TEST_F(ReadingTest, BlankSelectionGivesTheWholeText) {
    program_.emplace(desktop(), QStringLiteral("one two"),
                     AccessibleProgram::Options{.selectionStart = 3, .selectionEnd = 4});
    frontmost().pretend(program_->pid());
    const FocusReading reading = waitForFocus();
    EXPECT_EQ(reading.selectedText, std::nullopt);
    EXPECT_EQ(reading.selectedRange, std::nullopt);
    EXPECT_EQ(reading.value, QStringLiteral("one two"));
}

/// Somebody who still changes the selection while it is read, with the keys that come after the hot
/// key.
class MovingSelectionTest : public AtspiTest {
  protected:
    /// "two" is selected, and one of these after another whenever the text has been read.
    FocusReading readWhileMoving(const QList<std::pair<int, int>> &later) {
        harness::Desktop::Options options;
        options.windowManager = false;
        options.keyring = false;
        start(options);
        program_.emplace(desktop(), whole,
                         AccessibleProgram::Options{
                             .selectionStart = 4, .selectionEnd = 7, .laterSelections = later});
        frontmost().pretend(program_->pid());
        return waitForFocus();
    }

    static void expectOfOneMoment(const FocusReading &reading) {
        ASSERT_TRUE(reading.selectedText && reading.selectedRange);
        EXPECT_EQ(*reading.selectedText,
                  whole.mid(reading.selectedRange->location, reading.selectedRange->length));
    }

    inline static const QString whole = QStringLiteral("one two three");

  private:
    std::optional<AccessibleProgram> program_;
};

TEST_F(MovingSelectionTest, TextAndRangeAreOfOneMoment) {
    const FocusReading reading = readWhileMoving({{8, 13}});
    EXPECT_EQ(reading.selectedText, QStringLiteral("three"));
    expectOfOneMoment(reading);
}

TEST_F(MovingSelectionTest, ASelectionThatNeverRestsIsReadAsItWasOnce) {
    QList<std::pair<int, int>> growing;
    for (int read = 0; read < 20; ++read)
        growing.append({4, read % 2 == 0 ? 9 : 8});
    expectOfOneMoment(readWhileMoving(growing));
}

TEST_F(MovingSelectionTest, ASelectionThatVanishesLeavesTheWholeText) {
    const FocusReading reading = readWhileMoving({{7, 7}});
    EXPECT_EQ(reading.selectedText, std::nullopt);
    EXPECT_EQ(reading.selectedRange, std::nullopt);
    EXPECT_EQ(reading.value, whole);
}

} // namespace
} // namespace quillmender::atspi
