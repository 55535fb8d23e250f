#include "desktop/portal/PortalTest.h"
#include "desktop/portal/RemoteDesktopFakes.h"
#include "platform/linux/portal/RemoteDesktopKeys.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>

namespace quillmender {
namespace {

using test::runTask;
using testing::ElementsAre;
using wayland::TypedKeys;
using wayland::TypedOutcome;

const QString start = QStringLiteral("RemoteDesktop.Start");

class RemoteDesktopTest : public PortalTest {
  protected:
    RemoteDesktopTest() { grantWith(QStringLiteral("first")); }

    void grantWith(const QString &token) {
        fake_->grant(start,
                     {{QStringLiteral("devices"), 1u}, {QStringLiteral("restore_token"), token}});
    }

    TypedOutcome type() {
        return runTask(keys_.type(
            TypedKeys::controlC, [this] { return isMeant_; },
            [this] { fakeMoments_.append(fake_->asked()); }));
    }

    bool closesTheSession() {
        return harness::becomesTrue(
            [&] { return fake_->asked().endsWith(QStringLiteral("Session.Close")); });
    }

    FakeTokens tokens_;
    FakeModifiers modifiers_;
    portal::RemoteDesktopKeys keys_{portal_, tokens_, &modifiers_, fakeCodes};
    bool isMeant_ = true;
    QList<QStringList> fakeMoments_;
};

TEST_F(RemoteDesktopTest, NobodyIsAskedByTyping) {
    const TypedOutcome outcome = type();
    EXPECT_FALSE(outcome.isTyped);
    EXPECT_TRUE(outcome.isUnavailable);
    EXPECT_TRUE(fake_->asked().isEmpty());
}

TEST_F(RemoteDesktopTest, WhatTheUserHasAgreedToIsUsedWithASessionForEachTime) {
    EXPECT_TRUE(runTask(keys_.askUser()).isGranted());
    EXPECT_EQ(tokens_.kept, QStringLiteral("first"));
    EXPECT_FALSE(fake_->options(QStringLiteral("RemoteDesktop.SelectDevices"))
                     .contains(QStringLiteral("restore_token")));
    ASSERT_TRUE(closesTheSession());
    fake_->forget();

    grantWith(QStringLiteral("second"));
    EXPECT_TRUE(type().isTyped);
    ASSERT_TRUE(closesTheSession());
    EXPECT_THAT(fake_->asked(), ElementsAre(QStringLiteral("RemoteDesktop.CreateSession"),
                                            QStringLiteral("RemoteDesktop.SelectDevices"), start,
                                            QStringLiteral("key 29 1"), QStringLiteral("key 46 1"),
                                            QStringLiteral("key 46 0"), QStringLiteral("key 29 0"),
                                            QStringLiteral("Session.Close")));
    const QVariantMap options = fake_->options(QStringLiteral("RemoteDesktop.SelectDevices"));
    EXPECT_EQ(options.value(QStringLiteral("restore_token")), QStringLiteral("first"));
    EXPECT_EQ(options.value(QStringLiteral("types")), 1u);
    EXPECT_EQ(options.value(QStringLiteral("persist_mode")), 2u);
    EXPECT_EQ(tokens_.kept, QStringLiteral("second")) << "a token is good once";
    ASSERT_EQ(fakeMoments_.size(), 1);
    EXPECT_EQ(fakeMoments_[0].constLast(), start) << "the moment is before the keys";
}

TEST_F(RemoteDesktopTest, WhoHasRefusedIsAskedAgainOnlyWhenTheUserWants) {
    tokens_.kept = QStringLiteral("revoked");
    fake_->set(start, {1, {}});
    EXPECT_TRUE(type().isUnavailable);
    EXPECT_TRUE(tokens_.kept.isEmpty());
    ASSERT_TRUE(closesTheSession());
    fake_->forget();
    EXPECT_TRUE(type().isUnavailable);
    EXPECT_TRUE(fake_->asked().isEmpty());
    grantWith(QStringLiteral("new"));
    EXPECT_TRUE(runTask(keys_.askUser()).isGranted());
    EXPECT_TRUE(type().isTyped);
}

TEST_F(RemoteDesktopTest, WithoutTheKeyboardItIsNoPermission) {
    fake_->grant(start, {{QStringLiteral("devices"), 2u}});
    EXPECT_FALSE(runTask(keys_.askUser()).isGranted());
    EXPECT_FALSE(keys_.isAllowed());
}

TEST_F(RemoteDesktopTest, NothingIsTypedWhileModifiersAreHeldOrWhenItIsNotMeant) {
    tokens_.kept = QStringLiteral("first");
    modifiers_.held = QStringLiteral("the user holds Alt");
    EXPECT_EQ(type().reason, QStringLiteral("the user holds Alt"));
    ASSERT_TRUE(closesTheSession());
    modifiers_.held.reset();
    isMeant_ = false;
    EXPECT_FALSE(type().isTyped);
    ASSERT_TRUE(closesTheSession());
    EXPECT_TRUE(fake_->asked().filter(QStringLiteral("key")).isEmpty());
    EXPECT_TRUE(fakeMoments_.isEmpty());
    portal::RemoteDesktopKeys blind(portal_, tokens_, nullptr, fakeCodes);
    EXPECT_TRUE(runTask(blind.type(TypedKeys::controlV, [] { return true; }, [] {})).isUnavailable);
}

TEST_F(RemoteDesktopTest, APortalThatAsksInsteadOfAnsweringIsGivenUp) {
    tokens_.kept = QStringLiteral("old");
    fake_->set(start, {0, {}, Manner::silent});
    const TypedOutcome outcome = type();
    EXPECT_FALSE(outcome.isTyped);
    EXPECT_TRUE(outcome.isUnavailable);
    ASSERT_TRUE(closesTheSession());
    EXPECT_TRUE(fake_->asked().contains(QStringLiteral("Request.Close")));
    EXPECT_TRUE(fakeMoments_.isEmpty());
    fake_->forget();
    EXPECT_FALSE(type().isTyped);
    EXPECT_TRUE(fake_->asked().isEmpty()) << "or the user would be asked at each use";
}

TEST_F(RemoteDesktopTest, APortalThatEndsBeforeTheKeysHasTypedNothing) {
    tokens_.kept = QStringLiteral("first");
    modifiers_.beforeAnswer = [this] {
        fake_.reset();
        // Keys that reach it while it ends may have been typed.
        harness::becomesTrue([this] {
            return !portal_.bus().interface()->isServiceRegistered(
                QStringLiteral("org.freedesktop.portal.Desktop"));
        });
    };
    const TypedOutcome outcome =
        runTask(keys_.type(TypedKeys::controlV, [] { return true; }, [] {}));
    EXPECT_FALSE(outcome.isTyped);
    EXPECT_FALSE(outcome.isUnavailable) << "the next time it may be there again";
    EXPECT_FALSE(outcome.reason.isEmpty());
    EXPECT_EQ(tokens_.kept, QStringLiteral("first")) << "one that it gave is good once it is back";
}

TEST_F(RemoteDesktopTest, NoKeyCanOvertakeTheOneAheadOfIt) {
    tokens_.kept = QStringLiteral("first");
    fake_->set(QStringLiteral("RemoteDesktop.NotifyKeyboardKeycode"), {0, {}, Manner::mute});
    const auto keys = [this] { return fake_->asked().filter(QStringLiteral("key ")); };
    bool isTyped = false;
    const auto typing = [&]() -> QCoro::Task<> {
        const TypedOutcome outcome =
            co_await keys_.type(TypedKeys::controlC, [] { return true; }, [] {});
        isTyped = outcome.isTyped;
    };
    const auto task = typing();
    ASSERT_TRUE(harness::becomesTrue([&] { return !keys().isEmpty(); }));
    QElapsedTimer unanswered;
    unanswered.start();
    ASSERT_TRUE(harness::becomesTrue([&] { return keys().size() > 1; }));
    EXPECT_GE(unanswered.elapsed(), 500) << "it is given up before the next is sent";
    ASSERT_TRUE(harness::becomesTrue([&] { return isTyped; })) << "they may be typed all the same";
    EXPECT_THAT(keys(), ElementsAre(QStringLiteral("key 29 1"), QStringLiteral("key 46 1"),
                                    QStringLiteral("key 46 0"), QStringLiteral("key 29 0")));
}

TEST_F(RemoteDesktopTest, KeysThatAreRefusedAreNotTyped) {
    tokens_.kept = QStringLiteral("first");
    fake_->set(QStringLiteral("RemoteDesktop.NotifyKeyboardKeycode"), {0, {}, Manner::refused});
    const TypedOutcome outcome = type();
    EXPECT_FALSE(outcome.isTyped);
    EXPECT_EQ(outcome.reason, QStringLiteral("not now"));
}

} // namespace
} // namespace quillmender
