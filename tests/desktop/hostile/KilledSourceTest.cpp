#include "desktop/hostile/HostileFixture.h"

namespace quillmender {
namespace {

using harness::waitUntil;

class KilledTest : public HostileFixture {
  protected:
    void killSource() {
        const xcb_window_t window = source().window();
        source().process().kill();
        waitUntil([&] { return !desktop().windows().isViewable(window); },
                  QStringLiteral("its window is gone"));
    }
};

TEST_F(KilledTest, WhenThePasteBegins) {
    start();
    openLetter(Route::clipboard);
    askForAnswer();
    provider().release();
    waitForTemporaryText();
    killSource();
    waitForPanel(notReplaced);
    expectClipboardUntouched();
}

class KilledSourceTest : public KilledTest, public testing::WithParamInterface<bool> {
  protected:
    static Route route() { return GetParam() ? Route::accessibility : Route::clipboard; }
};

TEST_P(KilledSourceTest, BeforeTheCapture) {
    start();
    openLetter(route());
    killSource();
    pressHotKey();
    waitForPanel(noFrontmost);
    expectClipboardNeverTaken();
}

TEST_P(KilledSourceTest, WhileTheProviderThinks) {
    start();
    openLetter(route());
    askForAnswer();
    killSource();
    provider().release();
    waitForPanel(notReplaced);
    expectClipboardUntouched();
}

TEST_P(KilledSourceTest, AndItsSuccessorWithTheSameWindowNumberIsLeftAlone) {
    start();
    openLetter(route());
    const xcb_window_t window = source().window();
    askForAnswer();
    killSource();
    forgetSource();
    openLetter(route());
    EXPECT_EQ(source().window(), window) << "not the case that this test is about";
    provider().release();
    waitUntil([&] { return panelShows(notReplaced); }, QStringLiteral("the failure is shown"));
    expectClipboardUntouched();

    source().activate();
    answerWith(right);
    pressHotKey();
    waitForPanel(wrong);
    EXPECT_FALSE(panelShows(notReplaced));
    click(QStringLiteral("Fix My Grammar"));
    waitUntilPanelIsGone();
    expectClipboardUntouched();
    expectText(mended);
}

INSTANTIATE_TEST_SUITE_P(Routes, KilledSourceTest, testing::Bool(), [](const auto &chosen) {
    return std::string(chosen.param ? "Accessibility" : "Clipboard");
});

} // namespace
} // namespace quillmender
