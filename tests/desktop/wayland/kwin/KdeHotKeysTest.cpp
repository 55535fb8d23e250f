#include "platform/linux/wayland/kwin/KdeHotKeys.h"

#include "desktop/harness/Waiter.h"
#include "desktop/wayland/kwin/FakeGlobalAccel.h"
#include "support/RunTask.h"

#include <QUuid>
#include <gmock/gmock.h>

#include <optional>

namespace quillmender {
namespace {

using kwin::shortcutKeys;
using test::runTask;
using testing::ElementsAre;

constexpr QKeyCombination asked = Qt::ControlModifier | Qt::AltModifier | Qt::Key_Space;
constexpr QKeyCombination chosen = Qt::MetaModifier | Qt::Key_J;
const QString ours = QStringLiteral("com.quillmender.Quillmender");

class KdeHotKeysTest : public testing::Test {
  protected:
    using Manner = FakeGlobalAccel::Manner;

    ~KdeHotKeysTest() override { QDBusConnection::disconnectFromBus(name_); }

    HotKeyOutcome hold() {
        kwin::KdeHotKeys hotKeys(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_));
        return runTask(hotKeys.hold(asked, [this] { ++presses_; }));
    }

    bool isAskedLast(const char *method) {
        return harness::becomesTrue([&] { return fake_->asked().endsWith(QLatin1String(method)); });
    }

    const QString name_ = QUuid::createUuid().toString();
    std::optional<FakeGlobalAccel> fake_{std::in_place};
    int presses_ = 0;
};

TEST_F(KdeHotKeysTest, NewKeysAreTakenAndBecomeTheDefaultUntilTheEnd) {
    {
        const HotKeyOutcome held = hold();
        ASSERT_TRUE(held.hotKey);
        EXPECT_EQ(held.hotKey->keys(), asked);
        EXPECT_TRUE(held.reason.isEmpty());
        EXPECT_THAT(fake_->asked(),
                    ElementsAre(QStringLiteral("doRegister"), QStringLiteral("shortcutKeys"),
                                QStringLiteral("defaultShortcutKeys"),
                                QStringLiteral("setShortcutKeys 6"),
                                QStringLiteral("setShortcutKeys 8")));
        EXPECT_EQ(fake_->usualKeys(), shortcutKeys(asked));
    }
    EXPECT_TRUE(isAskedLast("setInactive"));
}

TEST_F(KdeHotKeysTest, WhatTheUserHasChosenIsKept) {
    fake_.reset();
    fake_.emplace(shortcutKeys(chosen), shortcutKeys(asked));
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    EXPECT_EQ(held.hotKey->keys(), chosen);
    EXPECT_EQ(fake_->asked().constLast(), QStringLiteral("setShortcutKeys 2"));
}

TEST_F(KdeHotKeysTest, NoKeysAreAChoiceToo) {
    fake_.reset();
    fake_.emplace(kwin::ShortcutKeys(), shortcutKeys(asked));
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    EXPECT_FALSE(held.hotKey->keys());
    EXPECT_EQ(held.reason, QStringLiteral("the user has chosen no keys for it"));
}

TEST_F(KdeHotKeysTest, KeysThatWereNeverChangedBecomeTheNewOnes) {
    fake_.reset();
    fake_.emplace(shortcutKeys(chosen), shortcutKeys(chosen));
    EXPECT_EQ(hold().hotKey->keys(), asked);
}

TEST_F(KdeHotKeysTest, TakenKeysAreLeftUntilTheyAreFree) {
    fake_->setTaken(true);
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    EXPECT_FALSE(held.hotKey->keys());
    EXPECT_EQ(held.reason, QStringLiteral("another program has the keys: Stranger (Act)"));
    EXPECT_TRUE(fake_->usualKeys().isEmpty()) << "so that they are asked for next time";
    fake_->setTaken(false);
    fake_->tellKeys(QStringLiteral("stranger"), {});
    EXPECT_TRUE(harness::becomesTrue([&] { return held.hotKey->keys() == asked; }));
}

TEST_F(KdeHotKeysTest, ChangesOfTheUserAreFollowedAndNonsenseIsNot) {
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    int changes = 0;
    QObject::connect(held.hotKey.get(), &HeldHotKey::keysChanged, [&changes] { ++changes; });
    fake_->tellNonsense();
    fake_->tellKeys(QStringLiteral("stranger"), {});
    fake_->tellKeys(ours, shortcutKeys(chosen));
    EXPECT_TRUE(harness::becomesTrue([&] { return held.hotKey->keys() == chosen; }));
    EXPECT_EQ(changes, 1);
    fake_->tellKeys(ours, {});
    EXPECT_TRUE(harness::becomesTrue([&] { return !held.hotKey->keys(); }));
    EXPECT_EQ(changes, 2);
}

TEST_F(KdeHotKeysTest, APressIsOneHoweverOftenItIsTold) {
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    for (int i = 0; i < 5; ++i)
        fake_->tellPressed(true);
    ASSERT_TRUE(harness::becomesTrue([&] { return presses_ > 0; }));
    fake_->tellPressed(false);
    fake_->tellPressed(true);
    fake_->tellPressed(true);
    fake_->tellKeys(ours, {});
    EXPECT_TRUE(harness::becomesTrue([&] { return !held.hotKey->keys(); }));
    EXPECT_TRUE(harness::becomesTrue([&] { return presses_ >= 2; }));
    EXPECT_EQ(presses_, 2);
}

TEST_F(KdeHotKeysTest, AfterARestartItIsHeldAgain) {
    const HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    fake_.reset();
    ASSERT_TRUE(harness::becomesTrue([&] { return !held.hotKey->keys(); }));
    fake_.emplace(shortcutKeys(asked), shortcutKeys(asked));
    EXPECT_TRUE(harness::becomesTrue([&] { return held.hotKey->keys() == asked; }));
    fake_->tellPressed(true);
    EXPECT_TRUE(harness::becomesTrue([&] { return presses_ == 1; }));
}

TEST_F(KdeHotKeysTest, ErrorsAndNonsenseAreNoHotKeyAndGrabNothing) {
    for (const char *method : {"doRegister", "shortcutKeys", "setShortcutKeys"}) {
        for (const Manner manner : {Manner::garbled, Manner::refused}) {
            if (qstrcmp(method, "doRegister") == 0 && manner == Manner::garbled)
                continue; // what it answers does not matter
            fake_->setManner(QLatin1String(method), manner);
            const HotKeyOutcome held = hold();
            EXPECT_FALSE(held.hotKey) << method;
            EXPECT_FALSE(held.reason.isEmpty()) << method;
            EXPECT_TRUE(isAskedLast("setInactive")) << method;
            fake_->setManner(QLatin1String(method), Manner::usual);
            fake_->forget();
        }
    }
}

TEST_F(KdeHotKeysTest, WhoDoesNotAnswerIsGivenUpAndToldToLetGo) {
    fake_->setManner(QStringLiteral("setShortcutKeys"), Manner::mute);
    const HotKeyOutcome held = hold();
    EXPECT_FALSE(held.hotKey);
    EXPECT_EQ(held.reason, QStringLiteral("the keeper of global shortcuts does not answer"));
    EXPECT_TRUE(isAskedLast("setInactive"));
    fake_.reset();
    EXPECT_FALSE(hold().hotKey);
}

} // namespace
} // namespace quillmender
