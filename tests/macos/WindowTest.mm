#include "FrameworksTest.h"
#include "doubles/appkit/ToolkitWindow.h"
#include "platform/macos/MacPresence.h"

namespace quillmender {

namespace {

using doubles::ToolkitWindow;
using testing::ElementsAre;

constexpr unsigned long closeButton = 0;
constexpr unsigned long miniaturizeButton = 1;
constexpr unsigned long zoomButton = 2;

class WindowTest : public FrameworksTest {
  protected:
    static void expectPanel(const ToolkitWindow &panel) {
        EXPECT_EQ(panel.styleMask(), 32771U);
        EXPECT_TRUE(panel.isFloatingPanel());
        EXPECT_EQ(panel.level(), 3);
        EXPECT_EQ(panel.collectionBehavior(), 258U);
        EXPECT_TRUE(panel.hasTransparentTitleBar());
        EXPECT_FALSE(panel.isReleasedWhenClosed());
        EXPECT_FALSE(panel.hidesOnDeactivate());
        EXPECT_TRUE(panel.showsButton(closeButton));
        EXPECT_FALSE(panel.showsButton(miniaturizeButton));
        EXPECT_FALSE(panel.showsButton(zoomButton));
        EXPECT_EQ(panel.contentWidth(), 620);
        EXPECT_EQ(panel.contentHeight(), 620);
    }

    static void expectWindow(const ToolkitWindow &window) {
        EXPECT_EQ(window.styleMask(), 7U);
        EXPECT_EQ(window.level(), 0);
        EXPECT_FALSE(window.hasTransparentTitleBar());
        EXPECT_EQ(window.titleVisibility(), 0);
        EXPECT_FALSE(window.isReleasedWhenClosed());
        EXPECT_FALSE(window.hidesOnDeactivate());
        EXPECT_TRUE(window.showsButton(closeButton));
        EXPECT_TRUE(window.showsButton(miniaturizeButton));
        EXPECT_EQ(window.contentWidth(), 760);
        EXPECT_EQ(window.contentHeight(), 820);
    }

    ToolkitWindow panel{ToolkitWindow::Kind::panel, 620, 620};
    ToolkitWindow window{ToolkitWindow::Kind::window, 760, 820};
    MacPresence presence;
};

} // namespace

TEST_F(WindowTest, PanelGetsItsAttributes) {
    presence.applyPanelAttributes(panel.identifier());
    expectPanel(panel);
}

TEST_F(WindowTest, PanelThatIsAnOrdinaryWindowFloatsToo) {
    presence.applyPanelAttributes(window.identifier());
    EXPECT_EQ(window.styleMask(), 32771U);
    EXPECT_EQ(window.level(), 3);
}

TEST_F(WindowTest, WindowGetsItsAttributes) {
    presence.applyWindowAttributes(window.identifier());
    expectWindow(window);
}

TEST_F(WindowTest, ActivationComesBeforeTheWindowIsKey) {
    presence.applyPanelAttributes(panel.identifier());
    calls();
    presence.activateWindow(panel.identifier());
    EXPECT_THAT(calls(), ElementsAre("NSApplication activateIgnoringOtherApps YES",
                                     "NSWindow makeKeyAndOrderFront style 32771"));
}

TEST_F(WindowTest, WindowMadeAnewHasItsAttributesWhenItIsShown) {
    presence.applyPanelAttributes(panel.identifier());
    presence.applyWindowAttributes(window.identifier());
    panel.makeNativeWindowAnew();
    window.makeNativeWindowAnew();
    calls();
    presence.activateWindow(panel.identifier());
    presence.activateWindow(window.identifier());
    EXPECT_THAT(calls(), ElementsAre("NSApplication activateIgnoringOtherApps YES",
                                     "NSWindow makeKeyAndOrderFront style 32771",
                                     "NSApplication activateIgnoringOtherApps YES",
                                     "NSWindow makeKeyAndOrderFront style 7"));
    expectPanel(panel);
    expectWindow(window);
}

TEST_F(WindowTest, SheetIsShownAsItIs) {
    const unsigned long before = window.styleMask();
    presence.activateWindow(window.identifier());
    EXPECT_EQ(window.styleMask(), before);
    EXPECT_EQ(window.level(), 0);
}

TEST_F(WindowTest, ViewWithoutWindowIsLeftAlone) {
    panel.loseNativeWindow();
    presence.applyPanelAttributes(panel.identifier());
    presence.activateWindow(panel.identifier());
    EXPECT_THAT(calls(), ElementsAre("NSApplication activateIgnoringOtherApps YES"));
}

} // namespace quillmender
