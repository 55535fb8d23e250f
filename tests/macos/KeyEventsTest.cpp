#include "DoublesTest.h"
#include "doubles/events/EventServer.h"
#include "fakes/Await.h"
#include "fakes/FakePasteboard.h"
#include "platform/macos/MacKeyEvents.h"
#include "selection/PasteboardManager.h"

namespace quillmender {
namespace {

using testing::ElementsAre;

class KeyEventsTest : public DoublesTest {
  protected:
    KeystrokeResult type(quint16 keyCode) {
        return fakes::await(manager.postCommandKeystroke(nullptr, keyCode, nullptr));
    }

    doubles::EventServer server;
    fakes::FakePasteboard pasteboard{fakes::makeCallLog()};
    MacKeyEvents keyEvents;
    PasteboardManager manager{pasteboard, keyEvents};
};

TEST_F(KeyEventsTest, postsTheCopyChordInTheFixedOrder) {
    EXPECT_EQ(type(keycode::c), KeystrokeResult::posted);
    EXPECT_THAT(calls(),
                ElementsAre("CGEventSourceCreate 0", "CGEventCreateKeyboardEvent 8 down",
                            "CGEventCreateKeyboardEvent 8 up", "CGEventSetFlags 8 down 0x100000",
                            "CGEventSetFlags 8 up 0x100000", "CGEventPost 0 8 down 0x100000",
                            "CGEventPost 0 8 up 0x100000"));
}

TEST_F(KeyEventsTest, postsThePasteChord) {
    EXPECT_EQ(type(keycode::v), KeystrokeResult::posted);
    EXPECT_THAT(calls(), testing::Contains("CGEventPost 0 9 down 0x100000"));
}

TEST_F(KeyEventsTest, withoutASourceNothingIsPosted) {
    server.createsSources = false;
    EXPECT_EQ(type(keycode::c), KeystrokeResult::failed);
    EXPECT_THAT(calls(), ElementsAre("CGEventSourceCreate 0"));
}

TEST_F(KeyEventsTest, withoutEitherEventNothingIsPosted) {
    for (bool *const creates : {&server.createsDown, &server.createsUp}) {
        *creates = false;
        EXPECT_EQ(type(keycode::c), KeystrokeResult::failed);
        EXPECT_THAT(calls(),
                    ElementsAre("CGEventSourceCreate 0", "CGEventCreateKeyboardEvent 8 down",
                                "CGEventCreateKeyboardEvent 8 up"));
        *creates = true;
    }
}

TEST_F(KeyEventsTest, passesEveryArgumentOn) {
    const KeyEventSourceRef source = keyEvents.createSource(1);
    const KeyEventRef event = keyEvents.createKeyboardEvent(source, 49, false);
    keyEvents.setFlags(event, 0x12'0000'0001);
    keyEvents.post(2, event);
    EXPECT_THAT(calls(), ElementsAre("CGEventSourceCreate 1", "CGEventCreateKeyboardEvent 49 up",
                                     "CGEventSetFlags 49 up 0x1200000001",
                                     "CGEventPost 2 49 up "
                                     "0x1200000001"));
}

TEST_F(KeyEventsTest, aSourceOrEventOfNobodyDoesNothing) {
    EXPECT_EQ(keyEvents.createKeyboardEvent(nullptr, 8, true), nullptr);
    EXPECT_EQ(keyEvents.createKeyboardEvent(std::make_shared<KeyEventSource>(), 8, true), nullptr);
    for (const KeyEventRef &event : {KeyEventRef(), std::make_shared<KeyEvent>()}) {
        keyEvents.setFlags(event, commandFlag);
        keyEvents.post(hidEventTap, event);
    }
    EXPECT_THAT(calls(), ElementsAre());
}

} // namespace
} // namespace quillmender
