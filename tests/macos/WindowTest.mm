#include "FrameworksTest.h"
#include "doubles/appkit/ToolkitWindow.h"
#include "platform/macos/MacOwnWindows.h"

#include <QGuiApplication>
#include <QWindow>

#include <optional>

namespace quillmender {

namespace {

using doubles::ToolkitWindow;
using testing::ElementsAre;

constexpr unsigned long closeButton = 0;
constexpr unsigned long miniaturizeButton = 1;
constexpr unsigned long zoomButton = 2;

class WindowTest : public FrameworksTest {
  protected:
    // The toolkit makes no window without it.
    static void SetUpTestSuite() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application.emplace(argumentCount, arguments);
    }
    static void TearDownTestSuite() { application.reset(); }

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
    QWindow panelHandle;
    QWindow windowHandle;
    MacOwnWindows ownWindows{[this](const QWindow &handle) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): as the toolkit hands the view out
        return reinterpret_cast<NSView *>((&handle == &panelHandle ? panel : window).identifier());
    }};

  private:
    static inline int argumentCount = 1;
    static inline char name[] = "test";
    static inline char *arguments[] = {name, nullptr};
    static inline std::optional<QGuiApplication> application;
};

} // namespace

TEST_F(WindowTest, AccessoryPolicyIsSet) {
    ownWindows.setAccessoryPolicy();
    EXPECT_THAT(calls(), ElementsAre("NSApplication setActivationPolicy 1"));
}

TEST_F(WindowTest, NothingStepsAsideForAWriteBack) {
    ownWindows.applyPanelAttributes(&panelHandle);
    calls();
    EXPECT_EQ(ownWindows.stepAside(&panelHandle), nullptr);
    EXPECT_THAT(calls(), ElementsAre());
}

TEST_F(WindowTest, PanelGetsItsAttributes) {
    ownWindows.applyPanelAttributes(&panelHandle);
    expectPanel(panel);
}

TEST_F(WindowTest, PanelThatIsAnOrdinaryWindowFloatsToo) {
    ownWindows.applyPanelAttributes(&windowHandle);
    EXPECT_EQ(window.styleMask(), 32771U);
    EXPECT_EQ(window.level(), 3);
}

TEST_F(WindowTest, WindowGetsItsAttributes) {
    ownWindows.applyWindowAttributes(&windowHandle);
    expectWindow(window);
}

TEST_F(WindowTest, ActivationComesBeforeTheWindowIsKey) {
    ownWindows.applyPanelAttributes(&panelHandle);
    calls();
    ownWindows.activate(&panelHandle);
    EXPECT_THAT(calls(), ElementsAre("NSApplication activateIgnoringOtherApps YES",
                                     "NSWindow makeKeyAndOrderFront style 32771"));
}

TEST_F(WindowTest, WindowMadeAnewHasItsAttributesWhenItIsShown) {
    ownWindows.applyPanelAttributes(&panelHandle);
    ownWindows.applyWindowAttributes(&windowHandle);
    panel.makeNativeWindowAnew();
    window.makeNativeWindowAnew();
    calls();
    ownWindows.activate(&panelHandle);
    ownWindows.activate(&windowHandle);
    EXPECT_THAT(calls(), ElementsAre("NSApplication activateIgnoringOtherApps YES",
                                     "NSWindow makeKeyAndOrderFront style 32771",
                                     "NSApplication activateIgnoringOtherApps YES",
                                     "NSWindow makeKeyAndOrderFront style 7"));
    expectPanel(panel);
    expectWindow(window);
}

TEST_F(WindowTest, SheetIsShownAsItIs) {
    const unsigned long before = window.styleMask();
    ownWindows.activate(&windowHandle);
    EXPECT_EQ(window.styleMask(), before);
    EXPECT_EQ(window.level(), 0);
}

TEST_F(WindowTest, ViewWithoutWindowIsLeftAlone) {
    panel.loseNativeWindow();
    ownWindows.applyPanelAttributes(&panelHandle);
    ownWindows.activate(&panelHandle);
    EXPECT_THAT(calls(), ElementsAre("NSApplication activateIgnoringOtherApps YES"));
}

} // namespace quillmender
