#include "desktop/hostile/HostileFixture.h"
#include "desktop/sessions/KeyRecorder.h"

namespace quillmender {
namespace {

using harness::waitUntil;

/// The window with the text is not where it was, or another one is in front of it.
class FocusTest : public HostileFixture {
  protected:
    void openAndAsk() {
        start();
        openLetter(Route::clipboard);
        askForAnswer();
    }

    void expectOutcome() {
        const bool isReplaced = isSessionReplaced();
        expectClipboardUntouched();
        source().activate();
        expectText(isReplaced ? mended : letter);
    }
};

TEST_F(FocusTest, WindowThatTakesTheFocusGetsNoKeys) {
    openAndAsk();
    KeyRecorder thief(desktop());
    desktop().windows().activate(desktop().windows().titled(QStringLiteral("Quillmender")));
    provider().release();
    waitForTemporaryText();
    waitUntil([&] { return desktop().windows().active() == source().window(); },
              QStringLiteral("the source is activated"));
    desktop().windows().activate(thief.window());
    isSessionReplaced();
    EXPECT_EQ(thief.presses(), QStringList());
    expectOutcome();
}

TEST_F(FocusTest, WindowThatHoldsTheFocusGetsNoKeys) {
    openAndAsk();
    KeyRecorder thief(desktop());
    provider().release();
    // It takes the focus back as soon as it has lost it.
    waitUntil(
        [&] {
            if (desktop().windows().active() == source().window())
                desktop().windows().activate(thief.window());
            return panelShows(notReplaced) || isPanelGone();
        },
        QStringLiteral("the session is over"));
    isSessionReplaced();
    EXPECT_EQ(thief.presses(), QStringList());
    expectOutcome();
}

TEST_F(FocusTest, DialogOfTheSourceGetsNoKeys) {
    openAndAsk();
    source().activate();
    input().chord({XK_Control_L, XK_o});
    waitUntil(
        [&] {
            const xcb_window_t active = desktop().windows().active();
            return active != XCB_WINDOW_NONE && active != source().window() &&
                   desktop().windows().processId(active) ==
                       desktop().windows().processId(source().window());
        },
        QStringLiteral("the dialog has the focus"));
    const xcb_window_t dialog = desktop().windows().active();
    provider().release();
    isSessionReplaced();
    desktop().windows().close(dialog);
    waitUntil([&] { return !desktop().windows().isViewable(dialog); },
              QStringLiteral("the dialog is gone"));
    expectOutcome();
}

TEST_F(FocusTest, MinimisedWindowComesBackForItsText) {
    openAndAsk();
    constexpr quint32 iconic = 3;
    sendToWindowManager(source().window(), "WM_CHANGE_STATE", iconic);
    waitUntil([&] { return !desktop().windows().isViewable(source().window()); },
              QStringLiteral("the source is minimised"));
    provider().release();
    waitUntilPanelIsGone();
    expectClipboardUntouched();
    expectText(mended);
}

TEST_F(FocusTest, WindowOnAnotherDesktopGetsItsText) {
    openAndAsk();
    constexpr quint32 pager = 2;
    sendToWindowManager(source().window(), "_NET_WM_DESKTOP", 1, pager);
    waitUntil([&] { return !desktop().windows().isViewable(source().window()); },
              QStringLiteral("the source is on the other desktop"));
    provider().release();
    waitUntilPanelIsGone();
    expectClipboardUntouched();
    expectText(mended);
}

TEST_F(FocusTest, ClosedWindowIsAFailure) {
    openAndAsk();
    const xcb_window_t window = source().window();
    desktop().windows().close(window);
    waitUntil([&] { return !desktop().windows().isViewable(window); },
              QStringLiteral("the source is closed"));
    provider().release();
    waitForPanel(notReplaced);
    expectClipboardUntouched();
}

} // namespace
} // namespace quillmender
