#include "desktop/sessions/SessionFixture.h"

namespace quillmender {

using harness::waitUntil;

namespace {

const QString panelTitle = QStringLiteral("Quillmender");

} // namespace

void SessionFixture::startDesktop(const harness::Desktop::Options &options) {
    DesktopTest::startDesktop(options);
    takeClipboard(harness::ClipboardOwner::textHtmlAndImage());
}

void SessionFixture::start() {
    startDesktop();
    startProgram();
}

xcb_window_t SessionFixture::waitForPanel() {
    xcb_window_t panel = XCB_WINDOW_NONE;
    waitUntil(
        [&] {
            panel = desktop().windows().titled(panelTitle);
            return panel != XCB_WINDOW_NONE && desktop().windows().active() == panel;
        },
        QStringLiteral("the panel is shown and active"));
    return panel;
}

void SessionFixture::waitUntilPanelIsGone() {
    waitUntil([&] { return desktop().windows().titled(panelTitle) == XCB_WINDOW_NONE; },
              QStringLiteral("the panel is gone"));
}

void SessionFixture::TearDown() {
    judgeLog();
    DesktopTest::TearDown();
    endSession();
}

} // namespace quillmender
