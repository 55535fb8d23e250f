#include "desktop/wayland/kwin/KwinTest.h"
#include "platform/linux/wayland/kwin/GlobalAccel.h"
#include "platform/linux/wayland/kwin/KdeHotKeys.h"
#include "support/RunTask.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <linux/input-event-codes.h>

namespace quillmender {
namespace {

using test::runTask;

constexpr QKeyCombination ours = Qt::ControlModifier | Qt::AltModifier | Qt::Key_Space;
const QStringList stranger{QStringLiteral("stranger"), QStringLiteral("act"),
                           QStringLiteral("Stranger"), QStringLiteral("Act")};

class GlobalShortcutTest : public KwinTest {
  protected:
    void SetUp() override {
        KwinTest::SetUp();
        hotKeys_ = kwin::KdeHotKeys::create(QDBusConnection::sessionBus());
        ASSERT_TRUE(hotKeys_);
        ASSERT_TRUE(window_.writes("active"));
    }

    HotKeyOutcome hold() {
        return runTask(hotKeys_->hold(ours, [this] { ++presses_; }));
    }

    void pressOurs() {
        user_->press(KEY_LEFTCTRL);
        user_->press(KEY_LEFTALT);
        user_->press(KEY_SPACE);
    }

    void releaseOurs() {
        user_->release(KEY_SPACE);
        user_->release(KEY_LEFTALT);
        user_->release(KEY_LEFTCTRL);
    }

    TestWindowProcess window_{QStringLiteral("pressed-in")};
    std::unique_ptr<kwin::KdeHotKeys> hotKeys_;
    int presses_ = 0;
};

TEST_F(GlobalShortcutTest, EachPressIsOneAndNothingOfItReachesAWindow) {
    {
        const HotKeyOutcome held = hold();
        ASSERT_TRUE(held.hotKey) << held.reason.toStdString();
        EXPECT_EQ(held.hotKey->keys(), ours) << held.reason.toStdString();
        for (int i = 1; i <= 3; ++i) {
            pressOurs();
            EXPECT_TRUE(harness::becomesTrue([&] { return presses_ == i; })) << i;
            releaseOurs();
        }
        user_->tap(KEY_F9);
        EXPECT_TRUE(harness::becomesTrue([&] {
            const QByteArrayList lines = window_.written();
            EXPECT_FALSE(lines.contains("Ctrl+Alt+Space"));
            return lines.contains("F9");
        }));
        EXPECT_EQ(presses_, 3);
    }
    pressOurs();
    releaseOurs();
    EXPECT_TRUE(window_.writes("Ctrl+Alt+Space")) << "nobody holds it any more";
    EXPECT_EQ(presses_, 3);
}

TEST_F(GlobalShortcutTest, WhatTheUserChoosesInTheSettingsIsFollowedAndKept) {
    constexpr QKeyCombination chosen = Qt::MetaModifier | Qt::Key_J;
    const QStringList action{QStringLiteral("com.quillmender.Quillmender"),
                             QStringLiteral("transform"), QStringLiteral("Quillmender"),
                             QStringLiteral("Transform Selected Text")};
    const auto choose = [&action](QKeyCombination keys) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            kwin::GlobalAccel::service, kwin::GlobalAccel::path, kwin::GlobalAccel::interface,
            QStringLiteral("setForeignShortcutKeys"));
        call << action << QVariant::fromValue(kwin::shortcutKeys(keys));
        QDBusConnection::sessionBus().send(call);
    };
    HotKeyOutcome held = hold();
    ASSERT_TRUE(held.hotKey);
    ASSERT_EQ(held.hotKey->keys(), ours);
    choose(chosen);
    EXPECT_TRUE(harness::becomesTrue([&] { return held.hotKey->keys() == chosen; }));
    user_->press(KEY_LEFTMETA);
    user_->tap(KEY_J);
    user_->release(KEY_LEFTMETA);
    EXPECT_TRUE(harness::becomesTrue([&] { return presses_ == 1; }));
    held.hotKey.reset();
    held = hold();
    ASSERT_TRUE(held.hotKey);
    EXPECT_EQ(held.hotKey->keys(), chosen);
    choose(ours);
    EXPECT_TRUE(harness::becomesTrue([&] { return held.hotKey->keys() == ours; }));
}

TEST_F(GlobalShortcutTest, KeysOfSomebodyElseAreLeftToThem) {
    // What an earlier test has asked for is ours until then.
    const kwin::GlobalAccel accel(QDBusConnection::sessionBus());
    constexpr QKeyCombination taken = Qt::ControlModifier | Qt::AltModifier | Qt::Key_J;
    kwin::registerShortcutKeys();
    ASSERT_TRUE(runTask(accel.doRegister(stranger)));
    ASSERT_EQ(runTask(accel.setKeys(stranger, kwin::shortcutKeys(taken),
                                    kwin::GlobalAccel::present | kwin::GlobalAccel::regardless)),
              kwin::shortcutKeys(taken));

    const HotKeyOutcome held = runTask(hotKeys_->hold(taken, [this] { ++presses_; }));
    ASSERT_TRUE(held.hotKey);
    EXPECT_FALSE(held.hotKey->keys());
    EXPECT_TRUE(held.reason.contains(QStringLiteral("Stranger"))) << held.reason.toStdString();
    EXPECT_EQ(runTask(accel.keys(stranger)), kwin::shortcutKeys(taken));
}

} // namespace
} // namespace quillmender
