#include "SettingsFixture.h"

namespace quillmender {
namespace {

class LaunchAtLoginTest : public SettingsFixture {};

TEST_F(LaunchAtLoginTest, ShowsWhatTheSystemSaysWithoutChangingIt) {
    const QList<std::pair<LoginItemStatus, std::optional<QString>>> states{
        {LoginItemStatus::notRegistered, std::nullopt},
        {LoginItemStatus::enabled,
         QStringLiteral("Quillmender will open automatically when you log in.")},
        {LoginItemStatus::requiresApproval,
         QStringLiteral("macOS needs approval in Login Items before Quillmender can start "
                        "automatically.")},
        {LoginItemStatus::notFound,
         QStringLiteral("Launch at Login is unavailable for this build.")},
        // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): a system of later days
        {static_cast<LoginItemStatus>(9), std::nullopt},
    };
    for (const auto &[status, message] : states) {
        loginItem.current = status;
        store().refreshLaunchAtLoginState();
        EXPECT_EQ(store().launchAtLoginEnabled(), status == LoginItemStatus::enabled);
        EXPECT_EQ(store().launchAtLoginStatusMessage(), message);
    }
    EXPECT_TRUE(log->isEmpty());
}

TEST_F(LaunchAtLoginTest, KeepsTheUsersValueWhileApprovalIsMissing) {
    loginItem.afterRegistration = LoginItemStatus::requiresApproval;
    store().setLaunchAtLoginEnabled(true);
    EXPECT_EQ(*log, QStringList({QStringLiteral("registerItem")}));
    EXPECT_TRUE(store().launchAtLoginEnabled());
    EXPECT_TRUE(store().launchAtLoginStatusMessage()->startsWith(QStringLiteral("macOS needs")));
    store().refreshLaunchAtLoginState();
    EXPECT_FALSE(store().launchAtLoginEnabled());
}

TEST_F(LaunchAtLoginTest, SpringsBackWhenTheChangeFails) {
    loginItem.current = LoginItemStatus::enabled;
    store();
    loginItem.error = QStringLiteral("Read-only file system");
    store().setLaunchAtLoginEnabled(false);
    EXPECT_EQ(*log, QStringList({QStringLiteral("unregisterItem")}));
    EXPECT_TRUE(store().launchAtLoginEnabled());
    EXPECT_EQ(store().launchAtLoginStatusMessage(), QStringLiteral("Read-only file system"));
}

TEST_F(LaunchAtLoginTest, AfterAFailureTheSystemsWordCountsAndNotTheRequest) {
    // The registration failed because it was there already, or was taken away meanwhile.
    for (const bool wanted : {true, false}) {
        for (const LoginItemStatus status :
             {LoginItemStatus::notRegistered, LoginItemStatus::enabled,
              LoginItemStatus::requiresApproval, LoginItemStatus::notFound}) {
            loginItem.error = QStringLiteral("Why");
            loginItem.current = status;
            store().setLaunchAtLoginEnabled(wanted);
            EXPECT_EQ(store().launchAtLoginEnabled(), status == LoginItemStatus::enabled);
            EXPECT_EQ(store().launchAtLoginStatusMessage(), QStringLiteral("Why"));
        }
    }
    EXPECT_EQ(log->size(), 8) << "no second attempt";
}

TEST_F(LaunchAtLoginTest, AfterASuccessTheUsersWordCountsAndTheSystemsIsShown) {
    loginItem.afterRegistration = LoginItemStatus::notFound;
    store().setLaunchAtLoginEnabled(true);
    EXPECT_TRUE(store().launchAtLoginEnabled());
    EXPECT_EQ(store().launchAtLoginStatusMessage(),
              QStringLiteral("Launch at Login is unavailable for this build."));
    store().setLaunchAtLoginEnabled(false);
    EXPECT_FALSE(store().launchAtLoginEnabled());
    EXPECT_EQ(store().launchAtLoginStatusMessage(), std::nullopt);
    EXPECT_EQ(*log,
              QStringList({QStringLiteral("registerItem"), QStringLiteral("unregisterItem")}));
}

TEST_F(LaunchAtLoginTest, TheSameValueIsARequestAgain) {
    store().setLaunchAtLoginEnabled(false);
    store().setLaunchAtLoginEnabled(true);
    store().setLaunchAtLoginEnabled(true);
    EXPECT_EQ(*log, QStringList({QStringLiteral("unregisterItem"), QStringLiteral("registerItem"),
                                 QStringLiteral("registerItem")}));
}

TEST_F(LaunchAtLoginTest, IsReadWhenTheStoreIsMade) {
    loginItem.current = LoginItemStatus::enabled;
    EXPECT_TRUE(store().launchAtLoginEnabled());
    EXPECT_EQ(store().launchAtLoginStatusMessage(),
              QStringLiteral("Quillmender will open automatically when you log in."));
}

TEST_F(LaunchAtLoginTest, TheSwitchAndItsLineAreEachAnnouncedBeforeTheyChange) {
    QStringList seen;
    QObject::connect(&store(), &Observable::objectWillChange, &store(), [&] {
        seen.append(
            QStringLiteral("%1 %2")
                .arg(store().launchAtLoginEnabled())
                .arg(store().launchAtLoginStatusMessage().value_or(QStringLiteral("-")).left(7)));
    });
    store().setLaunchAtLoginEnabled(true);
    EXPECT_EQ(seen, QStringList({QStringLiteral("0 -"), QStringLiteral("1 -")}));
    seen.clear();
    loginItem.current = LoginItemStatus::notFound;
    store().refreshLaunchAtLoginState();
    EXPECT_EQ(seen, QStringList({QStringLiteral("1 Quillme"), QStringLiteral("0 Quillme")}));
    seen.clear();
    loginItem.error = QStringLiteral("Why");
    store().setLaunchAtLoginEnabled(true);
    EXPECT_EQ(seen, QStringList({QStringLiteral("0 Launch "), QStringLiteral("1 Launch "),
                                 QStringLiteral("0 Launch ")}));
}

} // namespace
} // namespace quillmender
