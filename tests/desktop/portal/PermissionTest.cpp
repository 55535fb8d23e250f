#include "desktop/portal/PortalTest.h"
#include "desktop/portal/RemoteDesktopFakes.h"
#include "platform/linux/portal/RemoteDesktopKeys.h"
#include "platform/linux/portal/RemoteDesktopPermission.h"

namespace quillmender {
namespace {

using portal::RemoteDesktopPermission;
using State = Permission::State;
using harness::becomesTrue;
using test::runTask;
using testing::HasSubstr;

const QString remoteVersion = QStringLiteral("RemoteDesktop.version");
const QString startSession = QStringLiteral("RemoteDesktop.Start");

class PermissionTest : public PortalTest {
  protected:
    PermissionTest() {
        fake_->set(remoteVersion, {2, {}});
        grant();
    }

    void grant() {
        fake_->grant(startSession, {{QStringLiteral("devices"), 1u},
                                    {QStringLiteral("restore_token"), QStringLiteral("word")}});
    }

    bool becomes(State state) {
        return becomesTrue([&] { return permission_.state() == state; });
    }

    std::string sentence() { return permission_.sentence().toStdString(); }

    bool hasAsked() { return fake_->asked().contains(startSession); }

    FakeTokens tokens_;
    FakeModifiers modifiers_;
    portal::RemoteDesktopKeys keys_{portal_, tokens_, &modifiers_, fakeCodes};
    RemoteDesktopPermission permission_{portal_, keys_};
};

TEST_F(PermissionTest, NobodyIsAskedBeforeTheUserWants) {
    EXPECT_EQ(permission_.state(), State::unavailable);
    permission_.ask();
    ASSERT_TRUE(becomes(State::missing));
    EXPECT_EQ(fake_->asked(), QStringList{QStringLiteral("Registry.Register")});
    permission_.ask();
    EXPECT_EQ(permission_.state(), State::asked);
    permission_.ask();
    ASSERT_TRUE(becomes(State::granted));
    EXPECT_EQ(fake_->asked().count(startSession), 1);
    EXPECT_EQ(sentence(), "Quillmender may copy and paste for you.");
    fake_->forget();
    permission_.ask();
    EXPECT_EQ(permission_.state(), State::granted);
}

TEST_F(PermissionTest, APortalThatCannotRememberIsNotAsked) {
    fake_->set(remoteVersion, {1, {}});
    ASSERT_TRUE(becomesTrue([&] { return !fake_->asked().isEmpty(); }));
    EXPECT_EQ(runTask(portal_.version(QStringLiteral("RemoteDesktop"))), 1u);
    EXPECT_EQ(permission_.state(), State::unavailable);
}

TEST_F(PermissionTest, WhatCameOfAskingIsSaidAndTheUserMayAskAgain) {
    ASSERT_TRUE(becomes(State::missing));
    fake_->set(startSession, {1, {}});
    permission_.ask();
    ASSERT_TRUE(becomes(State::missing));
    EXPECT_THAT(sentence(), HasSubstr("You have not agreed."));

    fake_->set(startSession, {0, {}, Manner::refused});
    permission_.ask();
    EXPECT_EQ(sentence(), "Your desktop has been told to ask you. Look for its window.");
    ASSERT_TRUE(becomes(State::missing));
    EXPECT_THAT(sentence(), HasSubstr("Your desktop could not ask you."));

    fake_->grant(startSession, {{QStringLiteral("devices"), 1u}});
    permission_.ask();
    ASSERT_TRUE(becomes(State::missing));
    EXPECT_THAT(sentence(), HasSubstr("does not remember"));

    grant();
    permission_.ask();
    EXPECT_TRUE(becomes(State::granted));
}

TEST_F(PermissionTest, APortalThatEndsWhileTheUserIsAskedHasNotAsked) {
    ASSERT_TRUE(becomes(State::missing));
    fake_->set(startSession, {0, {}, Manner::silent});
    permission_.ask();
    ASSERT_TRUE(becomesTrue([&] { return hasAsked(); }));
    EXPECT_EQ(permission_.state(), State::asked);
    fake_.reset();
    ASSERT_TRUE(becomes(State::missing));
    EXPECT_THAT(sentence(), HasSubstr("could not ask you"));
}

TEST_F(PermissionTest, AnAgreementThatIsTakenBackIsMissingAgain) {
    ASSERT_TRUE(becomes(State::missing));
    permission_.ask();
    ASSERT_TRUE(becomes(State::granted));
    int changes = 0;
    QObject::connect(&permission_, &Permission::changed, [&changes] { ++changes; });
    fake_->set(startSession, {1, {}});
    EXPECT_TRUE(runTask(keys_.type(
                            wayland::TypedKeys::controlC, [] { return true; }, [] {}))
                    .isUnavailable);
    EXPECT_EQ(permission_.state(), State::missing);
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace quillmender
