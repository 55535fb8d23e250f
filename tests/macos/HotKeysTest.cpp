#include "DoublesTest.h"
#include "app/HotKeyManager.h"
#include "doubles/carbon/EventDispatcher.h"
#include "platform/macos/MacHotKeys.h"

#include <QCoreApplication>

namespace quillmender {
namespace {

using testing::ElementsAre;

constexpr auto install = "InstallEventHandler application keyb/5";
constexpr auto registration = "RegisterEventHotKey 49 0x1800 QLMD/1 application options 0";

class HotKeysTest : public DoublesTest {
  protected:
    doubles::EventDispatcher dispatcher;
    MacHotKeys hotKeys;
    int runs = 0;
};

TEST_F(HotKeysTest, installsTheHandlerThenRegistersTheChord) {
    HotKeyManager manager(hotKeys, [this] { ++runs; });
    EXPECT_THAT(calls(), ElementsAre());
    manager.registerHotKey();
    EXPECT_THAT(calls(), ElementsAre(install, registration));
}

TEST_F(HotKeysTest, replacesAnEarlierRegistration) {
    HotKeyManager manager(hotKeys, [this] { ++runs; });
    manager.registerHotKey();
    calls();
    manager.registerHotKey();
    EXPECT_THAT(calls(),
                ElementsAre("UnregisterEventHotKey", "RemoveEventHandler", install, registration));
    EXPECT_EQ(dispatcher.handlers.size(), 1U);
    EXPECT_EQ(dispatcher.hotKeys.size(), 1U);
    EXPECT_EQ(dispatcher.press(49, 0x1800), noErr);
    QCoreApplication::sendPostedEvents(&manager);
    EXPECT_EQ(runs, 1);
}

TEST_F(HotKeysTest, releasesBothWhenItEnds) {
    {
        HotKeyManager manager(hotKeys, [this] { ++runs; });
        manager.registerHotKey();
        calls();
    }
    EXPECT_THAT(calls(), ElementsAre("UnregisterEventHotKey", "RemoveEventHandler"));
}

TEST_F(HotKeysTest, eachPressRunsTheHandlerOnceInATurnOfItsOwn) {
    HotKeyManager manager(hotKeys, [this] { ++runs; });
    manager.registerHotKey();
    EXPECT_EQ(dispatcher.press(49, 0x1800), noErr);
    EXPECT_EQ(dispatcher.press(49, 0x1800), noErr);
    EXPECT_EQ(dispatcher.press(49, 0x0800), eventNotHandledErr);
    EXPECT_EQ(runs, 0);
    QCoreApplication::sendPostedEvents(&manager);
    EXPECT_EQ(runs, 2);
}

TEST_F(HotKeysTest, withoutUserDataAPressIsNotHandled) {
    const auto installed =
        hotKeys.installEventHandler(&HotKeyManager::hotKeyEventHandler, {0x6B657962, 5}, nullptr);
    ASSERT_EQ(dispatcher.handlers.size(), 1U);
    const doubles::EventDispatcher::Handler handler = dispatcher.handlers.front();
    EXPECT_EQ(handler.callback(nullptr, nullptr, handler.userData), -9874);
    EXPECT_EQ(handler.callback(nullptr, nullptr, nullptr), -9874);
    EXPECT_EQ(hotKeys.removeEventHandler(installed.handler), noErr);
}

qint32 countArguments(void *nextHandler, void *event, void *userData) {
    *static_cast<int *>(userData) += (nextHandler ? 1 : 0) + (event ? 10 : 0);
    return -1234;
}

TEST_F(HotKeysTest, passesTheCallOnAndItsStatusBack) {
    const auto installed = hotKeys.installEventHandler(&countArguments, {0x6B657962, 5}, &runs);
    EXPECT_EQ(installed.status, noErr);
    const auto registered = hotKeys.registerHotKey(8, 0x100, {1, 2}, 0);
    EXPECT_EQ(registered.status, noErr);
    EXPECT_EQ(dispatcher.press(8, 0x100), -1234);
    EXPECT_EQ(runs, 11);
    EXPECT_EQ(hotKeys.unregisterHotKey(registered.hotKey), noErr);
    EXPECT_EQ(hotKeys.removeEventHandler(installed.handler), noErr);
}

TEST_F(HotKeysTest, registersNothingWithoutAHandler) {
    dispatcher.installStatus = -9860;
    {
        HotKeyManager manager(hotKeys, [this] { ++runs; });
        manager.registerHotKey();
    }
    EXPECT_THAT(calls(), ElementsAre(install));
    const auto failed =
        hotKeys.installEventHandler(&HotKeyManager::hotKeyEventHandler, {0x6B657962, 5}, this);
    EXPECT_EQ(failed.status, -9860);
    EXPECT_EQ(failed.handler, 0U);
}

TEST_F(HotKeysTest, aTakenChordIsSilent) {
    dispatcher.registerStatus = eventHotKeyExistsErr;
    {
        HotKeyManager manager(hotKeys, [this] { ++runs; });
        manager.registerHotKey();
        calls();
    }
    EXPECT_THAT(calls(), ElementsAre("RemoveEventHandler"));
    const auto failed = hotKeys.registerHotKey(49, 0x1800, {1, 1}, 0);
    EXPECT_EQ(failed.status, eventHotKeyExistsErr);
    EXPECT_EQ(failed.hotKey, 0U);
}

TEST_F(HotKeysTest, aHandlerThatIsNotRemovedFindsNothingToDo) {
    const auto installed = hotKeys.installEventHandler(&countArguments, {0x6B657962, 5}, &runs);
    const doubles::EventDispatcher::Handler handler = dispatcher.handlers.front();
    dispatcher.removeStatus = -50;
    EXPECT_EQ(hotKeys.removeEventHandler(installed.handler), -50);
    EXPECT_EQ(handler.callback(nullptr, nullptr, handler.userData), -9874);
    EXPECT_EQ(runs, 0);
}

TEST_F(HotKeysTest, aFailedUnregistrationIsPassedOn) {
    const auto registered = hotKeys.registerHotKey(49, 0x1800, {1, 1}, 0);
    dispatcher.unregisterStatus = eventHotKeyInvalidErr;
    EXPECT_EQ(hotKeys.unregisterHotKey(registered.hotKey), eventHotKeyInvalidErr);
}

} // namespace
} // namespace quillmender
