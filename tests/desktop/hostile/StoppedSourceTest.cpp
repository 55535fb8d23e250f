#include "desktop/hostile/HostileFixture.h"

#include <QElapsedTimer>

namespace quillmender {
namespace {

using harness::waitUntil;

/// The application with the text hangs, and comes round when everything is over.
class StoppedSourceTest : public HostileFixture, public testing::WithParamInterface<bool> {
  protected:
    static Route route() { return GetParam() ? Route::accessibility : Route::clipboard; }

    void close(const QString &message) {
        waitForPanel(message);
        click(QStringLiteral("Close"));
        waitUntilPanelIsGone();
    }
};

TEST_P(StoppedSourceTest, BeforeTheCapture) {
    start();
    openLetter(route());
    source().process().suspend();
    QElapsedTimer timer;
    timer.start();
    pressHotKey();
    waitForPanel();
    RecordProperty("panelMs", static_cast<int>(timer.elapsed()));
    close(nothingSelected);
    EXPECT_TRUE(provider().requests().empty());

    source().process().resume();
    source().activate();
    waitUntilSourceActs();
    expectClipboardNeverTaken();

    selectByKeyboard(input(), letter, wrong);
    waitUntilSelected(wrong);
    answerWith(right);
    pressHotKey();
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    waitUntilPanelIsGone();
    expectClipboardUntouched();
    expectText(mended);
}

TEST_P(StoppedSourceTest, WhileTheProviderThinks) {
    start();
    openLetter(route());
    askForAnswer();
    source().process().suspend();
    provider().release();
    waitForPanel(notReplaced);
    expectClipboardUntouched();

    source().process().resume();
    source().activate();
    waitUntilSourceActs();
    expectClipboardUntouched();
    expectText(letter);
}

TEST_P(StoppedSourceTest, WhenThePasteBegins) {
    start();
    openLetter(route());
    askForAnswer();
    if (route() == Route::accessibility) {
        // Something that cannot be written over the bus: the range is gone.
        source().activate();
        input().chord({XK_Control_L, XK_a});
        input().type(QStringLiteral("New"));
        expectText(QStringLiteral("New"));
    }
    provider().release();
    waitForTemporaryText();
    source().process().suspend();
    waitUntil([&] { return panelShows(notReplaced); }, QStringLiteral("the failure is shown"));
    expectClipboardUntouched();

    source().process().resume();
    source().activate();
    if (route() == Route::accessibility) {
        expectText(QStringLiteral("New"));
    } else {
        waitUntilSourceActs();
        expectClipboardUntouched();
        expectText(letter);
    }
}

INSTANTIATE_TEST_SUITE_P(Routes, StoppedSourceTest, testing::Bool(), [](const auto &chosen) {
    return std::string(chosen.param ? "Accessibility" : "Clipboard");
});

} // namespace
} // namespace quillmender
