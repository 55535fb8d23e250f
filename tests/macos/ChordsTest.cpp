#include "DoublesTest.h"
#include "doubles/events/EventServer.h"
#include "fakes/Await.h"
#include "platform/macos/MacChords.h"

namespace quillmender {
namespace {

using testing::ElementsAre;

class ChordsTest : public DoublesTest {
  protected:
    using Outcome = ChordResult::Outcome;

    ChordResult type(Chord chord) { return fakes::await(chords.type(chord, {})); }

    doubles::EventServer server;
    MacChords chords;
};

TEST_F(ChordsTest, PostsTheCopyChordInTheFixedOrder) {
    const ChordResult result = type(Chord::copy);
    EXPECT_EQ(result.outcome, Outcome::typed);
    EXPECT_TRUE(result.reason.isEmpty());
    EXPECT_THAT(calls(),
                ElementsAre("CGEventSourceCreate 0", "CGEventCreateKeyboardEvent 8 down",
                            "CGEventCreateKeyboardEvent 8 up", "CGEventSetFlags 8 down 0x100000",
                            "CGEventSetFlags 8 up 0x100000", "CGEventPost 0 8 down 0x100000",
                            "CGEventPost 0 8 up 0x100000"));
}

TEST_F(ChordsTest, PostsThePasteChordInTheFixedOrder) {
    EXPECT_EQ(type(Chord::paste).outcome, Outcome::typed);
    EXPECT_THAT(calls(),
                ElementsAre("CGEventSourceCreate 0", "CGEventCreateKeyboardEvent 9 down",
                            "CGEventCreateKeyboardEvent 9 up", "CGEventSetFlags 9 down 0x100000",
                            "CGEventSetFlags 9 up 0x100000", "CGEventPost 0 9 down 0x100000",
                            "CGEventPost 0 9 up 0x100000"));
}

TEST_F(ChordsTest, WithoutASourceNothingIsPosted) {
    server.createsSources = false;
    const ChordResult result = type(Chord::copy);
    EXPECT_EQ(result.outcome, Outcome::unavailable);
    EXPECT_FALSE(result.reason.isEmpty());
    EXPECT_THAT(calls(), ElementsAre("CGEventSourceCreate 0"));
}

TEST_F(ChordsTest, WithoutEitherEventNothingIsPosted) {
    for (bool *const creates : {&server.createsDown, &server.createsUp}) {
        *creates = false;
        const ChordResult result = type(Chord::copy);
        EXPECT_EQ(result.outcome, Outcome::unavailable);
        EXPECT_FALSE(result.reason.isEmpty());
        EXPECT_THAT(calls(),
                    ElementsAre("CGEventSourceCreate 0", "CGEventCreateKeyboardEvent 8 down",
                                "CGEventCreateKeyboardEvent 8 up"));
        *creates = true;
    }
}

} // namespace
} // namespace quillmender
