#include "DoublesTest.h"
#include "doubles/accessibility/AccessibilityServer.h"
#include "doubles/cf/Dictionary.h"
#include "fakes/FakeWorkspace.h"
#include "platform/macos/MacAccessibilityAccess.h"
#include "selection/PermissionManager.h"

namespace quillmender {
namespace {

using testing::ElementsAre;

class PermissionTest : public DoublesTest {
  protected:
    doubles::AccessibilityServer server;
    MacAccessibilityAccess access;
};

TEST_F(PermissionTest, AsksWithoutAPrompt) {
    EXPECT_TRUE(access.isGranted());
    server.trusted = false;
    server.grantsOnPrompt = true;
    EXPECT_FALSE(access.isGranted());
    EXPECT_THAT(calls(), ElementsAre("AXIsProcessTrusted", "AXIsProcessTrusted"));
}

TEST_F(PermissionTest, PromptsWithOneOptionThenAsksAgain) {
    fakes::FakeWorkspace workspace{fakes::makeCallLog()};
    PermissionManager manager{access, workspace};
    server.trusted = false;
    manager.requestAccessibilityPermission();
    EXPECT_FALSE(manager.accessibilityGranted());
    server.grantsOnPrompt = true;
    calls();
    manager.requestAccessibilityPermission();
    EXPECT_TRUE(manager.accessibilityGranted());
    EXPECT_THAT(calls(),
                ElementsAre("AXIsProcessTrustedWithOptions {AXTrustedCheckOptionPrompt=true}",
                            "AXIsProcessTrusted"));
}

TEST_F(PermissionTest, WithoutMemoryForTheOptionsAsksAllTheSame) {
    doubles::nextDictionaryIsNull = true;
    access.request();
    EXPECT_THAT(calls(), ElementsAre("AXIsProcessTrustedWithOptions null"));
}

} // namespace
} // namespace quillmender
