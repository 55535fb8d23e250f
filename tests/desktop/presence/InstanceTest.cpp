#include "desktop/presence/PresenceFixture.h"

#include <xcb/xcb_keysyms.h>

#include <X11/keysym.h>

namespace quillmender {
namespace {

const QString busName = QStringLiteral("com.quillmender.Quillmender");
const QString settingsTitle = QStringLiteral("Quillmender Settings");
const QString aboutTitle = QStringLiteral("About Quillmender");
const QString panelTitle = QStringLiteral("Quillmender");

class InstanceTest : public PresenceFixture {
  protected:
    /// As a panel, a key binding or the application menu does it.
    void action(const QString &name) {
        EXPECT_EQ(run(QStringLiteral("gapplication"), {QStringLiteral("action"), busName, name}),
                  0);
    }

    /// The window is one of the program that was started first.
    void waitForOwnWindow(const QString &title) {
        EXPECT_EQ(desktop().windows().processId(waitForWindow(title)), program().pid());
    }

    /// Takes Control+Alt+Space, so that nobody else can.
    void takeHotKey() {
        xcb_connection_t *connection = desktop().connection().get();
        xcb_key_symbols_t *symbols = xcb_key_symbols_alloc(connection);
        const harness::XcbPointer<xcb_keycode_t> code(
            xcb_key_symbols_get_keycode(symbols, XK_space));
        xcb_key_symbols_free(symbols);
        const harness::XcbPointer<xcb_generic_error_t> error(xcb_request_check(
            connection, xcb_grab_key_checked(connection, 1, desktop().connection().root(),
                                             XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, *code,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        ASSERT_FALSE(error);
    }
};

TEST_F(InstanceTest, ASecondLaunchShowsTheSettingsOfTheFirst) {
    startProgram();
    EXPECT_EQ(run(program().path(), {}), 0);
    waitForOwnWindow(settingsTitle);
    EXPECT_TRUE(program().process().isRunning());
}

TEST_F(InstanceTest, ASecondLaunchEndsEvenWhenTheFirstDoesNotAnswer) {
    startProgram();
    program().process().suspend();
    EXPECT_EQ(run(program().path(), {}), 0);
    program().process().resume();
    waitForOwnWindow(settingsTitle);
}

TEST_F(InstanceTest, EachActionDoesWhatItSays) {
    startProgram();
    action(QStringLiteral("settings"));
    waitForOwnWindow(settingsTitle);
    action(QStringLiteral("about"));
    waitForOwnWindow(aboutTitle);
    action(QStringLiteral("transform"));
    waitForOwnWindow(panelTitle);
    action(QStringLiteral("quit"));
    waitUntilProgramHasEnded();
    EXPECT_EQ(program().process().exitCode(), 0);
    EXPECT_FALSE(desktop().sessionBus().hasOwner(busName));
}

TEST_F(InstanceTest, WithoutStatusAreaAndHotKeyTheApplicationMenuLetsTheUserIn) {
    takeHotKey();
    startProgram();
    desktop().input().chord({XK_Control_L, XK_Alt_L, XK_space});
    EXPECT_EQ(run(QStringLiteral("gapplication"), {QStringLiteral("launch"), busName}), 0);
    waitForOwnWindow(settingsTitle);
    EXPECT_EQ(desktop().windows().titled(panelTitle), XCB_WINDOW_NONE);
    closeWindow(settingsTitle);
    EXPECT_TRUE(program().process().isRunning());
    EXPECT_EQ(run(QStringLiteral("gapplication"), {QStringLiteral("launch"), busName}), 0);
    waitForOwnWindow(settingsTitle);
}

} // namespace
} // namespace quillmender
