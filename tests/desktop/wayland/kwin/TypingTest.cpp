#include "desktop/wayland/kwin/KwinTest.h"
#include "platform/linux/wayland/kwin/FakeInput.h"
#include "platform/linux/wayland/kwin/KeystateModifiers.h"
#include "platform/linux/wayland/kwin/SeatKeyboard.h"
#include "platform/linux/wayland/kwin/SeatLayout.h"
#include "support/RunTask.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QTimer>

#include <linux/input-event-codes.h>

namespace quillmender {
namespace {

using namespace std::chrono_literals;
using test::runTask;
using wayland::TypedKeys;
using wayland::TypedOutcome;

class TypingTest : public KwinTest {
  protected:
    void SetUp() override {
        KwinTest::SetUp();
        modifiers_ = kwin::KeystateModifiers::create(*connection_);
        ASSERT_TRUE(modifiers_);
        typing_ = typingWith(modifiers_.get());
        ASSERT_TRUE(typing_);
        ASSERT_TRUE(window_.writes("active"));
        ASSERT_TRUE(harness::becomesTrue([&] { return !keyboard_.keymap().isEmpty(); }));
    }

    std::unique_ptr<kwin::FakeInput> typingWith(kwin::HeldModifiers *modifiers) {
        return kwin::FakeInput::create(*connection_, modifiers,
                                       [this](TypedKeys keys) { return layout_.codesOf(keys); });
    }

    TypedOutcome type(TypedKeys keys) {
        return runTask(typing_->type(keys, [] { return true; }, [this] { ++chords_; }));
    }

    TestWindowProcess window_{QStringLiteral("typed-into")};
    kwin::SeatKeyboard keyboard_{*connection_};
    kwin::SeatLayout layout_{keyboard_, QDBusConnection::sessionBus()};
    std::unique_ptr<kwin::KeystateModifiers> modifiers_;
    std::unique_ptr<kwin::FakeInput> typing_;
    int chords_ = 0;
};

TEST_F(TypingTest, EachCombinationArrivesOnceAndNothingStaysDown) {
    EXPECT_TRUE(type(TypedKeys::controlC).isTyped);
    EXPECT_TRUE(type(TypedKeys::controlV).isTyped);
    EXPECT_TRUE(type(TypedKeys::shiftInsert).isTyped);
    EXPECT_EQ(chords_, 3);
    user_->tap(KEY_Q);
    ASSERT_TRUE(window_.writes("Ctrl+C"));
    EXPECT_TRUE(window_.writes("Ctrl+V"));
    EXPECT_TRUE(window_.writes("Shift+Ins"));
    EXPECT_TRUE(window_.writes("Q"));
}

TEST_F(TypingTest, WaitsForTheUserToLetGoOfModifiers) {
    user_->press(KEY_LEFTCTRL);
    user_->press(KEY_LEFTALT);
    QTimer::singleShot(200ms, typing_.get(), [this] {
        user_->release(KEY_LEFTALT);
        user_->release(KEY_LEFTCTRL);
    });
    EXPECT_TRUE(type(TypedKeys::controlC).isTyped);
    EXPECT_TRUE(window_.writes("Ctrl+C"));
}

TEST_F(TypingTest, TypesNothingWhileAModifierIsHeld) {
    for (const quint32 code :
         {KEY_LEFTCTRL, KEY_RIGHTALT, KEY_LEFTALT, KEY_LEFTSHIFT, KEY_LEFTMETA}) {
        user_->press(code);
        const TypedOutcome outcome = type(TypedKeys::controlV);
        EXPECT_FALSE(outcome.isTyped) << code;
        EXPECT_FALSE(outcome.isUnavailable) << code;
        EXPECT_TRUE(outcome.reason.startsWith(QStringLiteral("the user holds")))
            << outcome.reason.toStdString();
        user_->release(code);
    }
    EXPECT_EQ(chords_, 0);
    user_->tap(KEY_F9);
    ASSERT_TRUE(window_.writes("F9"));
    EXPECT_TRUE(type(TypedKeys::controlV).isTyped);
    EXPECT_TRUE(window_.writes("Ctrl+V"));
}

TEST_F(TypingTest, LocksDoNotMatter) {
    user_->tap(KEY_CAPSLOCK);
    user_->tap(KEY_NUMLOCK);
    EXPECT_TRUE(type(TypedKeys::controlC).isTyped);
    EXPECT_TRUE(window_.writes("Ctrl+C"));
    user_->tap(KEY_CAPSLOCK);
    user_->tap(KEY_NUMLOCK);
}

TEST_F(TypingTest, WhatIsNotMeantAnyMoreIsNotTyped) {
    const TypedOutcome outcome =
        runTask(typing_->type(TypedKeys::controlC, [] { return false; }, [this] { ++chords_; }));
    EXPECT_FALSE(outcome.isTyped);
    EXPECT_FALSE(outcome.isUnavailable);
    EXPECT_EQ(chords_, 0);
    user_->tap(KEY_F9);
    ASSERT_TRUE(harness::becomesTrue([&] { return window_.written().contains("F9"); }));
}

TEST_F(TypingTest, WithoutWordOfTheModifiersNothingIsTyped) {
    const auto blind = typingWith(nullptr);
    const TypedOutcome outcome =
        runTask(blind->type(TypedKeys::controlC, [] { return true; }, [this] { ++chords_; }));
    EXPECT_FALSE(outcome.isTyped);
    EXPECT_TRUE(outcome.isUnavailable);
    EXPECT_EQ(chords_, 0);
}

/// Has KWin read its keyboard layouts anew.
class LayoutTest : public TypingTest {
  protected:
    void setLayouts(const QByteArray &layouts, const QByteArray &variants, quint32 active) {
        const QByteArray before = keyboard_.keymap();
        QFile file(qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/kxkbrc"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Layout]\nUse=true\nLayoutList=" + layouts + "\nVariantList=" + variants +
                   "\n");
        file.close();
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.send(QDBusMessage::createSignal(QStringLiteral("/Layouts"),
                                            QStringLiteral("org.kde.keyboard"),
                                            QStringLiteral("reloadConfig")));
        ASSERT_TRUE(harness::becomesTrue([&] { return keyboard_.keymap() != before; }));
        if (active == 0)
            return;
        QDBusMessage set = QDBusMessage::createMethodCall(
            QStringLiteral("org.kde.keyboard"), QStringLiteral("/Layouts"),
            QStringLiteral("org.kde.KeyboardLayouts"), QStringLiteral("setLayout"));
        set << active;
        const QDBusMessage reply = bus.call(set, QDBus::Block, 10000);
        ASSERT_TRUE(reply.arguments().value(0).toBool());
    }

    void TearDown() override { setLayouts("us", "", 0); }
};

TEST_F(LayoutTest, TheActiveLayoutOfTwoWithoutLatinLetters) {
    setLayouts("us,ru", ",", 1);
    EXPECT_TRUE(type(TypedKeys::controlC).isTyped);
    EXPECT_TRUE(window_.writes("Ctrl+C"));
}

TEST_F(LayoutTest, LettersInOtherPlaces) {
    setLayouts("us", "dvorak", 0);
    EXPECT_TRUE(type(TypedKeys::controlC).isTyped);
    EXPECT_TRUE(window_.writes("Ctrl+C"));
    EXPECT_TRUE(type(TypedKeys::controlV).isTyped);
    EXPECT_TRUE(window_.writes("Ctrl+V"));
}

TEST_F(LayoutTest, TheSecondLayoutHasThemInOtherPlaces) {
    setLayouts("us,us", ",dvorak", 1);
    EXPECT_TRUE(type(TypedKeys::controlV).isTyped);
    EXPECT_TRUE(window_.writes("Ctrl+V"));
}

} // namespace
} // namespace quillmender
