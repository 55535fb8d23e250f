#include "selection/PermissionManager.h"

#include "fakes/FakeAccessibilityAccess.h"
#include "fakes/FakeWorkspace.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

TEST(PermissionManagerTest, AsksOnlyWhenItIsTold) {
    const fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeAccessibilityAccess access(log);
    fakes::FakeWorkspace workspace(log);
    PermissionManager manager(access, workspace);
    EXPECT_FALSE(manager.accessibilityGranted());
    EXPECT_TRUE(log->isEmpty());

    access.granted = false;
    access.grantsOnRequest = true;
    manager.requestAccessibilityPermission();
    EXPECT_TRUE(manager.accessibilityGranted());
    EXPECT_EQ(*log,
              QStringList({QStringLiteral("access.request"), QStringLiteral("access.isGranted")}));

    access.granted = false;
    EXPECT_TRUE(manager.accessibilityGranted());
    manager.refresh();
    EXPECT_FALSE(manager.accessibilityGranted());
}

TEST(PermissionManagerTest, OpensThePrivacySettings) {
    const fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeAccessibilityAccess access(log);
    fakes::FakeWorkspace workspace(log);
    PermissionManager(access, workspace).openAccessibilitySettings();
    EXPECT_EQ(*log, QStringList(QStringLiteral("openSettingsPage accessibility")));
}

} // namespace
} // namespace quillmender
