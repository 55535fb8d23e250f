#include "FrameworksTest.h"
#include "doubles/servicemanagement/LoginItemService.h"
#include "platform/macos/MacLoginItem.h"
#include "platform/none/NoneSecrets.h"
#include "platform/none/NoneUserDefaults.h"
#include "settings/SettingsStore.h"

namespace quillmender {

namespace {

using doubles::LoginItemService;
using testing::ElementsAre;

class LoginItemTest : public FrameworksTest {
  protected:
    LoginItemService &system = LoginItemService::shared();
    MacLoginItem loginItem;
    NoneUserDefaults defaults;
    NoneSecrets secrets;
};

} // namespace

TEST_F(LoginItemTest, ServiceIsTheMainApplicationsAndTakenOnce) {
    EXPECT_EQ(loginItem.status(), LoginItemStatus::notRegistered);
    loginItem.status();
    EXPECT_THAT(calls(), ElementsAre("SMAppService mainAppService", "SMAppService status",
                                     "SMAppService status"));
}

TEST_F(LoginItemTest, EveryStatusComesThrough) {
    for (const int status : {0, 1, 2, 3, 17}) {
        system.status = status;
        EXPECT_EQ(static_cast<int>(loginItem.status()), status);
    }
}

TEST_F(LoginItemTest, SuccessIsTheResultAndNotTheMissingError) {
    EXPECT_EQ(loginItem.registerItem(), std::nullopt);
    EXPECT_EQ(system.status, 1);
    EXPECT_EQ(loginItem.unregisterItem(), std::nullopt);
    EXPECT_EQ(system.status, 0);
    system.refusesWithoutError = true;
    EXPECT_EQ(loginItem.registerItem(), QString());
    EXPECT_EQ(loginItem.unregisterItem(), QString());
}

TEST_F(LoginItemTest, FailureIsDescribedInTheSystemsWords) {
    system.error = "Op\u00e9ration non permise";
    EXPECT_EQ(loginItem.registerItem(), QStringLiteral("Op\u00e9ration non permise"));
    EXPECT_EQ(loginItem.unregisterItem(), QStringLiteral("Op\u00e9ration non permise"));
}

TEST_F(LoginItemTest, SystemSettingsAreOpenedByTheService) {
    calls();
    loginItem.openSystemSettings();
    EXPECT_THAT(calls(), ElementsAre("SMAppService openSystemSettingsLoginItems"));
}

TEST_F(LoginItemTest, RefreshOnlyReads) {
    SettingsStore store(defaults, secrets, loginItem);
    calls();
    system.status = 2;
    store.refreshLaunchAtLoginState();
    EXPECT_THAT(calls(), ElementsAre("SMAppService status", "SMAppService status"));
    EXPECT_FALSE(store.launchAtLoginEnabled());
}

TEST_F(LoginItemTest, ToggleThatNeedsApprovalStaysOnUntilTheNextRefresh) {
    SettingsStore store(defaults, secrets, loginItem);
    system.statusAfterRegistration = 2;
    calls();
    store.setLaunchAtLoginEnabled(true);
    EXPECT_THAT(calls(), ElementsAre("SMAppService register", "SMAppService status"));
    EXPECT_TRUE(store.launchAtLoginEnabled());
    EXPECT_EQ(store.launchAtLoginStatusMessage(),
              QStringLiteral("macOS needs approval in Login Items before Quillmender can start "
                             "automatically."));
    store.refreshLaunchAtLoginState();
    EXPECT_FALSE(store.launchAtLoginEnabled());
}

TEST_F(LoginItemTest, ToggleSpringsBackWhenUnregisteringFails) {
    system.status = 1;
    SettingsStore store(defaults, secrets, loginItem);
    EXPECT_TRUE(store.launchAtLoginEnabled());
    system.error = "not allowed";
    calls();
    store.setLaunchAtLoginEnabled(false);
    EXPECT_THAT(calls(), ElementsAre("SMAppService unregister", "SMAppService status"));
    EXPECT_TRUE(store.launchAtLoginEnabled());
    EXPECT_EQ(store.launchAtLoginStatusMessage(), QStringLiteral("not allowed"));
}

} // namespace quillmender
