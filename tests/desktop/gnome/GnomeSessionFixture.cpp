#include "desktop/gnome/GnomeSessionFixture.h"

#include "desktop/harness/ClipboardOwner.h"

namespace quillmender {

using harness::waitUntil;

namespace {

const QByteArray platformLine = "quillmender.platform: ";

} // namespace

void GnomeSessionFixture::SetUp() {
    GnomeDesktopTest::SetUp();
    if (IsSkipped())
        return;
    desktop();
    takeClipboard(harness::ClipboardOwner::textHtmlAndImage());
    startProgram(
        {{QStringLiteral("QT_LOGGING_RULES"),
          QStringLiteral("quillmender.session.info=true;quillmender.platform.info=true")}});
    if (program().log().contains(platformLine + "source applications: none"))
        GTEST_SKIP() << "the program can work in no application on this desktop";
    agreeToHotKey();
}

void GnomeSessionFixture::agreeToHotKey() {
    desktop().dialogs().acceptKeys();
    // Again and again: the program may not yet have heard what the portal has answered.
    constexpr std::chrono::seconds aWhile{1};
    waitUntil(
        [&] {
            pressHotKey();
            return harness::becomesTrue([&] { return panel().isActive(); }, aWhile);
        },
        QStringLiteral("the hot key opens the panel"));
    click(QStringLiteral("Close"));
    waitUntilPanelIsGone();
}

harness::WindowId GnomeSessionFixture::waitForPanel() {
    waitUntil([&] { return panel().isActive(); }, QStringLiteral("the panel is shown and active"));
    return desktop().windows().titled(QStringLiteral("Quillmender"));
}

void GnomeSessionFixture::waitUntilPanelIsGone() {
    waitUntil([&] { return !program().process().isRunning() || !panel().isShown(); },
              QStringLiteral("the panel is gone"));
}

QPoint GnomeSessionFixture::middleOf(const harness::Accessible &widget) {
    return panel().middleOf(widget);
}

bool GnomeSessionFixture::isToBeLogged(const QByteArray &line) {
    // What the toolkit says when the shell takes the input method from a window that has just gone.
    return line.startsWith(platformLine) || line.startsWith("qt.qpa.wayland.textinput: ");
}

void GnomeSessionFixture::TearDown() {
    if (!IsSkipped())
        judgeLog();
    GnomeDesktopTest::TearDown();
    endSession();
}

} // namespace quillmender
