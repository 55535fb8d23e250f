#include "FrameworksTest.h"
#include "doubles/appkit/RunningApplications.h"
#include "platform/macos/MacRunningApplication.h"
#include "platform/macos/MacWorkspace.h"

namespace quillmender {

namespace {

using doubles::RunningApplications;
using testing::ElementsAre;

class WorkspaceTest : public FrameworksTest {
  protected:
    WorkspaceTest() { calls(); }

    static int processOf(const RunningApplicationRef &application) {
        const auto *own = dynamic_cast<const MacRunningApplication *>(application.get());
        return own ? [own->get() processIdentifier] : 0;
    }

    RunningApplications &system = RunningApplications::shared();
    MacWorkspace workspace;
};

} // namespace

TEST_F(WorkspaceTest, FrontmostApplicationIsTheSystems) {
    system.frontmost = 7;
    EXPECT_EQ(processOf(workspace.frontmostApplication()), 7);
    EXPECT_THAT(calls(), ElementsAre("NSWorkspace frontmostApplication"));
    system.frontmost = 8;
    EXPECT_EQ(processOf(workspace.frontmostApplication()), 8);
}

TEST_F(WorkspaceTest, NoFrontmostApplicationIsNone) {
    EXPECT_EQ(workspace.frontmostApplication(), nullptr);
    system.bringToFront(7);
    system.frontmost.reset();
    EXPECT_EQ(workspace.frontmostApplication(), nullptr);
}

TEST_F(WorkspaceTest, ThisProgramInFrontStandsForTheLastOtherOne) {
    system.frontmost = RunningApplications::own;
    EXPECT_EQ(workspace.frontmostApplication(), nullptr);
    system.frontmost = 7;
    EXPECT_EQ(processOf(workspace.frontmostApplication()), 7);
    system.bringToFront(RunningApplications::own);
    EXPECT_EQ(processOf(workspace.frontmostApplication()), 7);
    system.bringToFront(8);
    system.bringToFront(RunningApplications::own);
    EXPECT_EQ(processOf(workspace.frontmostApplication()), 8);
}

TEST_F(WorkspaceTest, TheApplicationInFrontBeforeTheLaunchIsRemembered) {
    system.frontmost = 7;
    MacWorkspace launched;
    // The toolkit may take the front before anybody hears of activations.
    system.frontmost = RunningApplications::own;
    EXPECT_EQ(processOf(launched.frontmostApplication()), 7);
}

TEST_F(WorkspaceTest, ActivationPassesTheEmptyOptionSet) {
    system.frontmost = 7;
    const RunningApplicationRef application = workspace.frontmostApplication();
    calls();
    EXPECT_TRUE(workspace.activate(application));
    EXPECT_THAT(calls(), ElementsAre("NSRunningApplication 7 activateWithOptions 0"));
    system.terminated.insert(7);
    EXPECT_FALSE(workspace.activate(application));
    EXPECT_FALSE(workspace.activate(nullptr));
}

TEST_F(WorkspaceTest, HandleOutlivesTheWorkspaceThatGaveIt) {
    RunningApplicationRef application;
    {
        MacWorkspace shortLived;
        system.frontmost = 9;
        application = shortLived.frontmostApplication();
    }
    EXPECT_EQ(processOf(application), 9);
    system.bringToFront(10);
}

TEST_F(WorkspaceTest, PlacesNoWindowItself) {
    system.frontmost = 7;
    EXPECT_EQ(workspace.windowFrame(workspace.frontmostApplication()).has_value(), false);
}

TEST_F(WorkspaceTest, UrlIsOpenedAsItIsWritten) {
    EXPECT_TRUE(workspace.openUrl(QUrl(QStringLiteral("https://example.org/a%20b/\u00e9?q=1"))));
    EXPECT_THAT(calls(), ElementsAre("NSWorkspace openURL https://example.org/a%20b/%C3%A9?q=1"));
}

TEST_F(WorkspaceTest, AccessibilityPageIsALinkIntoThePrivacySettings) {
    EXPECT_TRUE(workspace.openSettingsPage(SettingsPage::accessibility));
    EXPECT_THAT(calls(),
                ElementsAre("NSWorkspace openURL x-apple.systempreferences:com.apple.preference."
                            "security?Privacy_Accessibility"));
    system.opensUrls = false;
    EXPECT_FALSE(workspace.openSettingsPage(SettingsPage::accessibility));
}

TEST_F(WorkspaceTest, UrlThatNobodyOpensIsTold) {
    system.opensUrls = false;
    EXPECT_FALSE(workspace.openUrl(QUrl(QStringLiteral("https://example.org"))));
    calls();
    EXPECT_FALSE(workspace.openUrl(QUrl()));
    EXPECT_THAT(calls(), ElementsAre());
}

} // namespace quillmender
