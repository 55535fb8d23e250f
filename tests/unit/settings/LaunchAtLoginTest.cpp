#include "SettingsFixture.h"

namespace quillmender {
namespace {

class LaunchAtLoginTest : public SettingsFixture {};

TEST_F(LaunchAtLoginTest, showsWhatTheSystemSaysWithoutChangingIt) {
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

TEST_F(LaunchAtLoginTest, keepsTheUsersValueWhileApprovalIsMissing) {
    loginItem.afterRegistration = LoginItemStatus::requiresApproval;
    store().setLaunchAtLoginEnabled(true);
    EXPECT_EQ(*log, QStringList({QStringLiteral("registerItem")}));
    EXPECT_TRUE(store().launchAtLoginEnabled());
    EXPECT_TRUE(store().launchAtLoginStatusMessage()->startsWith(QStringLiteral("macOS needs")));
    store().refreshLaunchAtLoginState();
    EXPECT_FALSE(store().launchAtLoginEnabled());
}

TEST_F(LaunchAtLoginTest, springsBackWhenTheChangeFails) {
    loginItem.current = LoginItemStatus::enabled;
    store();
    loginItem.error = QStringLiteral("Read-only file system");
    store().setLaunchAtLoginEnabled(false);
    EXPECT_EQ(*log, QStringList({QStringLiteral("unregisterItem")}));
    EXPECT_TRUE(store().launchAtLoginEnabled());
    EXPECT_EQ(store().launchAtLoginStatusMessage(), QStringLiteral("Read-only file system"));
}

} // namespace
} // namespace quillmender
