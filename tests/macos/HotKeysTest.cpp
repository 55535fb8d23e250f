#include "DoublesTest.h"
#include "app/HotKeyManager.h"
#include "doubles/carbon/EventDispatcher.h"
#include "fakes/Await.h"
#include "platform/macos/MacHotKey.h"
#include "platform/macos/MacHotKeys.h"
#include "settings/HotKeyDisplay.h"

#include <QCoreApplication>

namespace quillmender {
namespace {

using testing::ElementsAre;

constexpr auto install = "InstallEventHandler application keyb/5";
constexpr auto registration = "RegisterEventHotKey 49 0x1800 QLMD/1 application options 0";

class HotKeysTest : public DoublesTest {
  protected:
    void hold() { manager->registerHotKey(); }
    void letGo() { manager.reset(); }
    static void finishTurn() { QCoreApplication::sendPostedEvents(); }

    doubles::EventDispatcher dispatcher;
    MacHotKeys hotKeys;
    int runs = 0;
    std::vector<std::optional<QKeyCombination>> told;
    std::unique_ptr<HotKeyManager> manager = [this] {
        auto made = std::make_unique<HotKeyManager>(hotKeys, [this] { ++runs; });
        QObject::connect(made.get(), &HotKeyManager::heldKeysChanged, made.get(),
                         [this](std::optional<QKeyCombination> keys) { told.push_back(keys); });
        return made;
    }();
};

TEST_F(HotKeysTest, InstallsTheHandlerThenRegistersTheChord) {
    EXPECT_THAT(calls(), ElementsAre());
    hold();
    EXPECT_THAT(calls(), ElementsAre(install, registration));
    EXPECT_THAT(told, ElementsAre(askedHotKey));
}

TEST_F(HotKeysTest, ReplacesAnEarlierRegistration) {
    hold();
    calls();
    hold();
    EXPECT_THAT(calls(),
                ElementsAre("UnregisterEventHotKey", "RemoveEventHandler", install, registration));
    EXPECT_EQ(dispatcher.handlers.size(), 1U);
    EXPECT_EQ(dispatcher.hotKeys.size(), 1U);
    EXPECT_EQ(dispatcher.press(49, 0x1800), noErr);
    finishTurn();
    EXPECT_EQ(runs, 1);
}

TEST_F(HotKeysTest, ReleasesBothWhenItEnds) {
    hold();
    calls();
    letGo();
    EXPECT_THAT(calls(), ElementsAre("UnregisterEventHotKey", "RemoveEventHandler"));
}

TEST_F(HotKeysTest, EachPressRunsTheHandlerOnceInATurnOfItsOwn) {
    hold();
    EXPECT_EQ(dispatcher.press(49, 0x1800), noErr);
    EXPECT_EQ(dispatcher.press(49, 0x1800), noErr);
    EXPECT_EQ(dispatcher.press(49, 0x0800), eventNotHandledErr);
    EXPECT_EQ(runs, 0);
    finishTurn();
    EXPECT_EQ(runs, 2);
}

TEST_F(HotKeysTest, AModifierIsTheKeyOfThatName) {
    const auto modifiersOf = [this](Qt::KeyboardModifiers modifiers) {
        hotKeys.hold(QKeyCombination(modifiers, Qt::Key_Space), [] {});
        return calls().at(1);
    };
    EXPECT_THAT(modifiersOf(Qt::ControlModifier), testing::HasSubstr(" 49 0x1000 "));
    EXPECT_THAT(modifiersOf(Qt::AltModifier), testing::HasSubstr(" 49 0x800 "));
    EXPECT_THAT(modifiersOf(Qt::ShiftModifier), testing::HasSubstr(" 49 0x200 "));
    EXPECT_THAT(modifiersOf(Qt::MetaModifier), testing::HasSubstr(" 49 0x100 "));
}

TEST_F(HotKeysTest, AnotherKeyIsRefusedWithoutAskingTheSystem) {
    const HotKeyOutcome outcome =
        fakes::await(hotKeys.hold(QKeyCombination(Qt::ControlModifier, Qt::Key_F1), [] {}));
    EXPECT_EQ(outcome.hotKey, nullptr);
    EXPECT_FALSE(outcome.reason.isEmpty());
    EXPECT_THAT(calls(), ElementsAre());
}

TEST_F(HotKeysTest, WithoutUserDataAPressIsNotHandled) {
    hold();
    EXPECT_EQ(MacHotKey::hotKeyEventHandler(nullptr, nullptr, nullptr), -9874);
    finishTurn();
    EXPECT_EQ(runs, 0);
}

TEST_F(HotKeysTest, RegistersNothingWithoutAHandler) {
    dispatcher.installStatus = -9860;
    hold();
    EXPECT_THAT(told, ElementsAre(std::nullopt));
    letGo();
    EXPECT_THAT(calls(), ElementsAre(install));
    const HotKeyOutcome outcome = fakes::await(hotKeys.hold(askedHotKey, [] {}));
    EXPECT_EQ(outcome.hotKey, nullptr);
    EXPECT_FALSE(outcome.reason.isEmpty());
}

TEST_F(HotKeysTest, ATakenChordLeavesTheHandlerAndHoldsNoKeys) {
    dispatcher.registerStatus = eventHotKeyExistsErr;
    hold();
    EXPECT_THAT(calls(), ElementsAre(install, registration));
    EXPECT_THAT(told, ElementsAre(std::nullopt));
    letGo();
    EXPECT_THAT(calls(), ElementsAre("RemoveEventHandler"));
}

TEST_F(HotKeysTest, AHandlerThatIsNotRemovedFindsNothingToDo) {
    hold();
    const doubles::EventDispatcher::Handler handler = dispatcher.handlers.front();
    dispatcher.removeStatus = -50;
    letGo();
    EXPECT_EQ(handler.callback(nullptr, nullptr, handler.userData), -9874);
    finishTurn();
    EXPECT_EQ(runs, 0);
}

TEST_F(HotKeysTest, AFailedUnregistrationDoesNotKeepTheHandler) {
    hold();
    calls();
    dispatcher.unregisterStatus = eventHotKeyInvalidErr;
    letGo();
    EXPECT_THAT(calls(), ElementsAre("UnregisterEventHotKey", "RemoveEventHandler"));
}

TEST_F(HotKeysTest, FoldsFourCharacters) {
    EXPECT_EQ(MacHotKey::fourCharCode(u"QLMD"), 0x514C4D44U);
    EXPECT_EQ(MacHotKey::fourCharCode(u""), 0U);
    EXPECT_EQ(MacHotKey::fourCharCode(u"xQLMD"), 0x514C4D44U);
}

} // namespace
} // namespace quillmender
