#include "FrameworksTest.h"
#include "doubles/appkit/RunningApplications.h"
#include "doubles/appkit/ToolkitWindow.h"
#include "platform/macos/MacOwnWindows.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

#include <optional>

namespace quillmender {

namespace {

using doubles::RunningApplications;
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
        EXPECT_EQ(panel.contentBottom(), 0);
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
        EXPECT_EQ(window.contentBottom(), 0);
    }

    /// What is asked of the system for what is queued now.
    static std::vector<std::string> callsWhenSettled() {
        QCoreApplication::processEvents();
        return calls();
    }

    void show(QWindow &handle) {
        handle.show();
        ownWindows.activate(&handle);
        calls();
    }

    RunningApplications &applications = RunningApplications::shared();
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

TEST_F(WindowTest, TheTitleBarCoversThePanelsTopAndNoOther) {
    ownWindows.applyPanelAttributes(&panelHandle);
    ownWindows.applyWindowAttributes(&windowHandle);
    EXPECT_EQ(ownWindows.coveredHeight(&panelHandle), 28);
    EXPECT_EQ(ownWindows.coveredHeight(&windowHandle), 0);
    panel.loseNativeWindow();
    EXPECT_EQ(ownWindows.coveredHeight(&panelHandle), 0);
}

TEST_F(WindowTest, TheKeyboardGoesBackAfterTheLastWindowHasGone) {
    applications.bringToFront(7);
    ownWindows.applyPanelAttributes(&panelHandle);
    show(panelHandle);
    EXPECT_EQ(applications.frontmost, RunningApplications::own);
    panelHandle.hide();
    EXPECT_THAT(calls(), ElementsAre()) << "before the rest of what hides the panel";
    EXPECT_THAT(callsWhenSettled(), ElementsAre("NSApplication hide"));
    EXPECT_EQ(applications.frontmost, 7);
}

TEST_F(WindowTest, AClosedWindowGivesTheKeyboardBack) {
    applications.bringToFront(7);
    ownWindows.applyWindowAttributes(&windowHandle);
    show(windowHandle);
    windowHandle.close();
    EXPECT_THAT(callsWhenSettled(), ElementsAre("NSApplication hide"));
}

TEST_F(WindowTest, AnAlertThatHasOnlyBeenActivatedGivesTheKeyboardBack) {
    applications.bringToFront(7);
    show(windowHandle);
    windowHandle.hide();
    EXPECT_THAT(callsWhenSettled(), ElementsAre("NSApplication hide"));
}

TEST_F(WindowTest, TheKeyboardStaysWhileAWindowIsLeft) {
    ownWindows.applyPanelAttributes(&panelHandle);
    ownWindows.applyWindowAttributes(&windowHandle);
    show(windowHandle);
    show(panelHandle);
    panelHandle.hide();
    EXPECT_THAT(callsWhenSettled(), ElementsAre());
    windowHandle.hide();
    EXPECT_THAT(callsWhenSettled(), ElementsAre("NSApplication hide"));
}

TEST_F(WindowTest, TheKeyboardStaysWhenAnotherWindowComesAtOnce) {
    ownWindows.applyPanelAttributes(&panelHandle);
    show(panelHandle);
    panelHandle.hide();
    show(windowHandle);
    EXPECT_THAT(callsWhenSettled(), ElementsAre());
}

TEST_F(WindowTest, AMiniaturisedWindowDoesNotKeepTheKeyboard) {
    ownWindows.applyWindowAttributes(&windowHandle);
    show(windowHandle);
    show(panelHandle);
    windowHandle.showMinimized();
    panelHandle.hide();
    EXPECT_THAT(callsWhenSettled(), ElementsAre("NSApplication hide"));
}

TEST_F(WindowTest, ATooltipDoesNotKeepTheKeyboard) {
    QWindow tip;
    tip.setFlags(Qt::ToolTip);
    show(panelHandle);
    tip.show();
    panelHandle.hide();
    EXPECT_THAT(callsWhenSettled(), ElementsAre("NSApplication hide"));
}

TEST_F(WindowTest, AnotherApplicationInFrontIsLeftAlone) {
    show(panelHandle);
    applications.bringToFront(7);
    panelHandle.hide();
    EXPECT_THAT(callsWhenSettled(), ElementsAre());
}

TEST_F(WindowTest, CommandWClosesWindowsAndNotThePanel) {
    ownWindows.applyPanelAttributes(&panelHandle);
    ownWindows.applyWindowAttributes(&windowHandle);
    for (QWindow *handle : {&panelHandle, &windowHandle}) {
        show(*handle);
        QKeyEvent command(QEvent::KeyPress, Qt::Key_W, Qt::ControlModifier);
        QCoreApplication::sendEvent(handle, &command);
    }
    EXPECT_TRUE(panelHandle.isVisible());
    EXPECT_FALSE(windowHandle.isVisible());
    windowHandle.show();
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_W, Qt::NoModifier, QStringLiteral("w"));
    QCoreApplication::sendEvent(&windowHandle, &letter);
    EXPECT_TRUE(windowHandle.isVisible());
}

TEST_F(WindowTest, ViewWithoutWindowIsLeftAlone) {
    panel.loseNativeWindow();
    ownWindows.applyPanelAttributes(&panelHandle);
    ownWindows.activate(&panelHandle);
    EXPECT_THAT(calls(), ElementsAre("NSApplication activateIgnoringOtherApps YES"));
}

} // namespace quillmender
