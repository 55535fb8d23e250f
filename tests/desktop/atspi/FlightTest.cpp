#include "desktop/atspi/AtspiTest.h"
#include "desktop/atspi/ScriptedField.h"
#include "desktop/harness/AccessibilityBus.h"
#include "platform/linux/atspi/TextReader.h"

#include <QCoroTask>

namespace quillmender::atspi {
namespace {

using harness::waitUntil;

const QString whole = QStringLiteral("one two three");
constexpr TextRange selectedWord{4, 3};

/// Selected text and range, with what the range needs asked ahead.
class FlightTest : public AtspiTest {
  protected:
    void SetUp() override {
        AtspiTest::SetUp();
        harness::Desktop::Options options;
        options.windowManager = false;
        options.keyring = false;
        start(options);
        waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is there"));
        field_.emplace(desktop().accessibilityBus()->address(), whole);
        field_->selectionStart = int(selectedWord.location);
        field_->selectionEnd = int(selectedWord.location + selectedWord.length);
        bus_.emplace(desktop().sessionBus().connection());
        waitUntil([&] { return bus_->isConnected(); }, QStringLiteral("the reader is on the bus"));
        reader_.emplace(*bus_);
        ElementTraits traits;
        traits.object = {field_->service(), ScriptedField::path()};
        traits.interfaces = {QLatin1String(protocol::text)};
        element_ = std::make_shared<const TextElement>(traits, Toolkit::qt,
                                                       std::make_shared<CallBudget>());
    }

    std::optional<QString> text() {
        return QCoro::waitFor(reader_->selectedText(element_, ahead_));
    }
    std::optional<TextRange> range() {
        return QCoro::waitFor(reader_->selectedRange(element_, ahead_));
    }

    std::optional<ScriptedField> field_;
    std::optional<AtspiBus> bus_;
    std::optional<TextReader> reader_;
    TextElementRef element_;
    TextReader::AskedAheadRef ahead_ = std::make_shared<TextReader::AskedAhead>();
};

TEST_F(FlightTest, TextAndRangeTakeTwoFlights) {
    // The selection with the length; then the text with all that its range needs.
    field_->flights = {4, 6};
    EXPECT_EQ(text(), QStringLiteral("two"));
    EXPECT_EQ(range(), selectedWord);
    EXPECT_TRUE(field_->flights.isEmpty());
}

TEST_F(FlightTest, WhatWasAskedEarlyIsNotAskedAgain) {
    field_->flights = {4, 6};
    ahead_->early = reader_->askEarly(element_->traits.object, element_->budget);
    EXPECT_EQ(text(), QStringLiteral("two"));
    EXPECT_EQ(range(), selectedWord);
    EXPECT_TRUE(field_->flights.isEmpty());
    EXPECT_FALSE(ahead_->early.has_value());
}

TEST_F(FlightTest, WhatWasAskedEarlyOfAnotherObjectCountsForNothing) {
    const ObjectRef other{field_->service(), QStringLiteral("/elsewhere")};
    ahead_->early = reader_->askEarly(other, element_->budget);
    EXPECT_EQ(text(), QStringLiteral("two"));
    EXPECT_EQ(range(), selectedWord);
}

TEST_F(FlightTest, ASelectionThatMovesAfterTheEarlyQuestionIsReadAgain) {
    field_->flights = {4};
    ahead_->early = reader_->askEarly(element_->traits.object, element_->budget);
    waitUntil([&] { return field_->flights.isEmpty(); }, QStringLiteral("it is answered"));
    field_->selectionStart = 8;
    field_->selectionEnd = 13;
    EXPECT_EQ(text(), QStringLiteral("two")) << "what was selected when the user asked";
    EXPECT_EQ(range(), (TextRange{8, 5}));
}

TEST_F(FlightTest, WhatWasAskedAheadServesOneReading) {
    ASSERT_EQ(text(), QStringLiteral("two"));
    ASSERT_EQ(range(), selectedWord);
    field_->text = QStringLiteral("and one two three");
    field_->selectionStart = 8;
    field_->selectionEnd = 11;
    EXPECT_EQ(range(), (TextRange{8, 3}));
}

TEST_F(FlightTest, ATextThatChangesWithinTheFlightHasNoRange) {
    field_->whenRead = [this] {
        field_->text.prepend(QStringLiteral("x"));
        field_->whenRead = {};
    };
    EXPECT_EQ(text(), QStringLiteral("two"));
    EXPECT_EQ(range(), std::nullopt);
}

TEST_F(FlightTest, ASelectionThatMovesWithinTheFlightIsReadAgain) {
    field_->whenRead = [this] {
        field_->selectionStart = 8;
        field_->selectionEnd = 13;
        field_->whenRead = {};
    };
    EXPECT_EQ(text(), QStringLiteral("two"));
    EXPECT_EQ(range(), (TextRange{8, 5}));
}

TEST_F(FlightTest, AnAnswerThatNeverComesLeavesTheTextWithoutARange) {
    field_->whenRead = [this] { field_->isMute = true; };
    EXPECT_EQ(text(), QStringLiteral("two"));
    EXPECT_EQ(range(), std::nullopt);
    EXPECT_TRUE(element_->budget->isSilent(field_->service())) << "asked nothing more";
}

TEST_F(FlightTest, AnswersThatComeTwiceOrInAnotherOrderAreTheSame) {
    field_->flights = {4, 6};
    field_->answersBackwards = true;
    field_->answersTwice = true;
    EXPECT_EQ(text(), QStringLiteral("two"));
    EXPECT_EQ(range(), selectedWord);
}

TEST_F(FlightTest, ALargeTextIsNotAskedForAhead) {
    field_->text = whole + QString(100'000, QChar(u'a'));
    EXPECT_EQ(text(), QStringLiteral("two"));
    EXPECT_FALSE(ahead_->whole.has_value());
    EXPECT_EQ(range(), selectedWord);
}

} // namespace
} // namespace quillmender::atspi
