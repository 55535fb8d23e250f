#include "app/HotKeyManager.h"

#include "fakes/FakeHotKeys.h"

#include <QCoreApplication>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

using testing::ElementsAre;

constexpr QKeyCombination asked(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);
constexpr QKeyCombination other(Qt::MetaModifier, Qt::Key_F12);
const QString hold = QStringLiteral("hold Ctrl+Alt+Space");
const QString letGo = QStringLiteral("letGo");

class HotKeyManagerTest : public testing::Test {
  protected:
    HotKeyManagerTest() {
        QObject::connect(manager.get(), &HotKeyManager::heldKeysChanged, manager.get(),
                         [this](std::optional<QKeyCombination> keys) { told.push_back(keys); });
    }

    static void finishTurn() { QCoreApplication::sendPostedEvents(); }

    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeHotKeys hotKeys{log};
    int runs = 0;
    std::vector<std::optional<QKeyCombination>> told;
    std::unique_ptr<HotKeyManager> manager =
        std::make_unique<HotKeyManager>(hotKeys, [this] { ++runs; });
};

TEST_F(HotKeyManagerTest, HoldsTheChordWhenItIsRegistered) {
    EXPECT_TRUE(log->isEmpty());
    manager->registerHotKey();
    EXPECT_EQ(*log, QStringList({hold}));
    EXPECT_THAT(told, ElementsAre(asked));
}

TEST_F(HotKeyManagerTest, LetsGoOfAnEarlierRegistrationFirst) {
    manager->registerHotKey();
    manager->registerHotKey();
    EXPECT_EQ(*log, QStringList({hold, letGo, hold}));
    hotKeys.press();
    finishTurn();
    EXPECT_EQ(runs, 1);
}

TEST_F(HotKeyManagerTest, LetsGoWhenItEnds) {
    manager->registerHotKey();
    manager.reset();
    EXPECT_EQ(*log, QStringList({hold, letGo}));
}

TEST_F(HotKeyManagerTest, APressRunsTheHandlerOnceInATurnOfItsOwn) {
    manager->registerHotKey();
    hotKeys.press();
    hotKeys.press();
    EXPECT_EQ(runs, 0);
    finishTurn();
    EXPECT_EQ(runs, 2);
}

TEST_F(HotKeyManagerTest, APressThatIsStillToBeToldEndsWithTheHotKey) {
    manager->registerHotKey();
    hotKeys.press();
    manager.reset();
    finishTurn();
    EXPECT_EQ(runs, 0);
}

TEST_F(HotKeyManagerTest, TheHandlerMayEndTheHotKey) {
    manager = std::make_unique<HotKeyManager>(hotKeys, [this] {
        ++runs;
        manager.reset();
        ++runs;
    });
    manager->registerHotKey();
    hotKeys.press();
    hotKeys.press();
    finishTurn();
    EXPECT_EQ(runs, 2);
}

TEST_F(HotKeyManagerTest, TellsThatThereIsNone) {
    hotKeys.refusal = QStringLiteral("the desktop has none");
    manager->registerHotKey();
    EXPECT_THAT(told, ElementsAre(std::nullopt));
    manager.reset();
    EXPECT_EQ(*log, QStringList({hold}));
}

TEST_F(HotKeyManagerTest, FollowsKeysThatAreLostFoundOrChosenByTheUser) {
    hotKeys.isTaken = true;
    manager->registerHotKey();
    hotKeys.held->setKeys(asked);
    hotKeys.held->setKeys(std::nullopt);
    hotKeys.held->setKeys(other);
    EXPECT_THAT(told, ElementsAre(std::nullopt, asked, std::nullopt, other));
    EXPECT_EQ(*log, QStringList({hold})) << "it stands all the while";
    hotKeys.press();
    finishTurn();
    EXPECT_EQ(runs, 1);
}

TEST_F(HotKeyManagerTest, AnAnswerMayComeLate) {
    fakes::Gate gate;
    hotKeys.gate = &gate;
    manager->registerHotKey();
    EXPECT_TRUE(told.empty());
    gate.open();
    EXPECT_THAT(told, ElementsAre(asked));
    hotKeys.press();
    finishTurn();
    EXPECT_EQ(runs, 1);
}

TEST_F(HotKeyManagerTest, AnAnswerAfterItsEndIsLetGoOf) {
    fakes::Gate gate;
    hotKeys.gate = &gate;
    manager->registerHotKey();
    manager.reset();
    gate.open();
    EXPECT_EQ(*log, QStringList({hold, letGo}));
    EXPECT_TRUE(told.empty());
}

TEST_F(HotKeyManagerTest, ALateAnswerToAnEarlierRegistrationIsLetGoOf) {
    fakes::Gate first;
    hotKeys.gate = &first;
    manager->registerHotKey();
    hotKeys.gate = nullptr;
    manager->registerHotKey();
    const QPointer<fakes::FakeHotKeys::Held> second = hotKeys.held;
    first.open();
    EXPECT_EQ(*log, QStringList({hold, hold, letGo}));
    EXPECT_TRUE(second);
    EXPECT_THAT(told, ElementsAre(asked));
}

} // namespace
} // namespace quillmender
