#include "app/HotKeyManager.h"

#include "fakes/FakeHotKeys.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

class HotKeyManagerTest : public testing::Test {
  protected:
    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeHotKeys hotKeys{log};
    int runs = 0;
};

TEST_F(HotKeyManagerTest, installsTheHandlerThenRegistersTheChord) {
    HotKeyManager manager(hotKeys, [this] { ++runs; });
    EXPECT_TRUE(log->isEmpty());
    manager.registerHotKey();
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("installEventHandler 0x6b657962 5"),
                        QStringLiteral("registerHotKey 49 0x1800 0x514c4d44 1 options 0"),
                    }));
}

TEST_F(HotKeyManagerTest, replacesAnEarlierRegistration) {
    HotKeyManager manager(hotKeys, [this] { ++runs; });
    manager.registerHotKey();
    log->clear();
    manager.registerHotKey();
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("unregisterHotKey 2"),
                        QStringLiteral("removeEventHandler 1"),
                        QStringLiteral("installEventHandler 0x6b657962 5"),
                        QStringLiteral("registerHotKey 49 0x1800 0x514c4d44 1 options 0"),
                    }));
}

TEST_F(HotKeyManagerTest, registersNothingWithoutAHandler) {
    hotKeys.installStatus = -1;
    {
        HotKeyManager manager(hotKeys, [this] { ++runs; });
        manager.registerHotKey();
    }
    EXPECT_EQ(*log, QStringList({QStringLiteral("installEventHandler 0x6b657962 5")}));
}

TEST_F(HotKeyManagerTest, aTakenChordIsSilent) {
    hotKeys.registerStatus = -9878;
    {
        HotKeyManager manager(hotKeys, [this] { ++runs; });
        manager.registerHotKey();
        log->clear();
    }
    EXPECT_EQ(*log, QStringList({QStringLiteral("removeEventHandler 1")}));
}

TEST_F(HotKeyManagerTest, releasesBothWhenItEnds) {
    {
        HotKeyManager manager(hotKeys, [this] { ++runs; });
        manager.registerHotKey();
        log->clear();
    }
    EXPECT_EQ(*log, QStringList({QStringLiteral("unregisterHotKey 2"),
                                 QStringLiteral("removeEventHandler 1")}));
}

TEST_F(HotKeyManagerTest, onlySchedulesTheHandlerOnceForEachPress) {
    HotKeyManager manager(hotKeys, [this] { ++runs; });
    manager.registerHotKey();
    EXPECT_EQ(hotKeys.press(), noErr);
    EXPECT_EQ(hotKeys.press(), noErr);
    EXPECT_EQ(runs, 0);
    QCoreApplication::sendPostedEvents(&manager);
    EXPECT_EQ(runs, 2);
}

TEST_F(HotKeyManagerTest, answersNotHandledWithoutItsManager) {
    EXPECT_EQ(HotKeyManager::hotKeyEventHandler(nullptr, nullptr, nullptr), -9874);
}

TEST_F(HotKeyManagerTest, foldsFourCharacters) {
    EXPECT_EQ(HotKeyManager::fourCharCode(u"QLMD"), 0x514C4D44U);
    EXPECT_EQ(HotKeyManager::fourCharCode(u""), 0U);
    EXPECT_EQ(HotKeyManager::fourCharCode(u"xQLMD"), 0x514C4D44U);
}

} // namespace
} // namespace quillmender
