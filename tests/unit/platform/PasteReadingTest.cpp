#include "platform/linux/PasteReading.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

using namespace std::chrono_literals;

class PasteReadingTest : public testing::Test {
  protected:
    const PasteReading::Moment typed_{100s};
    PasteReading reading_;
};

TEST_F(PasteReadingTest, CountsFromTheChord) {
    reading_.note(typed_);
    EXPECT_FALSE(reading_.isBegun());
    reading_.begin(typed_);
    EXPECT_FALSE(reading_.isBegun());
    reading_.note(typed_ + 5ms);
    EXPECT_TRUE(reading_.isBegun());
    reading_.begin(typed_ + 10ms);
    EXPECT_FALSE(reading_.isBegun()) << "that was another paste";
}

TEST_F(PasteReadingTest, ReadersInNoHurryGetAsLongAgain) {
    reading_.begin(typed_);
    reading_.note(typed_ + 5ms);
    EXPECT_EQ(reading_.rest(typed_ + 5ms), 80ms);
    EXPECT_EQ(reading_.rest(typed_ + 85ms), 0ms);

    reading_.begin(typed_);
    reading_.note(typed_ + 300ms);
    EXPECT_EQ(reading_.rest(typed_ + 300ms), 300ms);
    reading_.note(typed_ + 500ms);
    EXPECT_EQ(reading_.rest(typed_ + 700ms), 100ms) << "after each, what the first took";

    reading_.begin(typed_);
    reading_.note(typed_ + 30s);
    EXPECT_EQ(reading_.rest(typed_ + 30s), 1s);
}

} // namespace
} // namespace quillmender
