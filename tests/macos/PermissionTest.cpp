#include "AccessibilityTest.h"
#include "fakes/FakeWorkspace.h"
#include "selection/PermissionManager.h"

namespace quillmender {
namespace {

using testing::ElementsAre;

class PermissionTest : public AccessibilityTest {
  protected:
    fakes::FakeWorkspace workspace{fakes::makeCallLog()};
    PermissionManager manager{accessibility, workspace};
};

TEST_F(PermissionTest, asksWithoutPromptOnRefresh) {
    manager.refresh();
    EXPECT_TRUE(manager.accessibilityGranted());
    server.trusted = false;
    manager.refresh();
    EXPECT_FALSE(manager.accessibilityGranted());
    EXPECT_THAT(calls(), ElementsAre("AXIsProcessTrusted", "AXIsProcessTrusted"));
}

TEST_F(PermissionTest, promptsWithOneOptionThenAsksAgain) {
    server.trusted = false;
    server.grantsOnPrompt = true;
    manager.requestAccessibilityPermission();
    EXPECT_TRUE(manager.accessibilityGranted());
    EXPECT_THAT(calls(),
                ElementsAre("AXIsProcessTrustedWithOptions {AXTrustedCheckOptionPrompt=true}",
                            "AXIsProcessTrusted"));
}

TEST_F(PermissionTest, aRefusedPromptLeavesItUngranted) {
    server.trusted = false;
    manager.requestAccessibilityPermission();
    EXPECT_FALSE(manager.accessibilityGranted());
    EXPECT_FALSE(accessibility.isProcessTrustedWithPrompt());
}

TEST_F(PermissionTest, withoutMemoryForTheOptionsAsksAllTheSame) {
    doubles::nextDictionaryIsNull = true;
    EXPECT_TRUE(accessibility.isProcessTrustedWithPrompt());
    EXPECT_THAT(calls(), ElementsAre("AXIsProcessTrustedWithOptions null"));
}

} // namespace
} // namespace quillmender
