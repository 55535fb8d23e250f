#include "desktop/wayland/sessions/WaylandSessionFixture.h"

#include "desktop/harness/ClipboardOwner.h"

namespace quillmender {

using harness::Accessible;
using harness::CompositorKind;
using harness::waitUntil;

namespace {

const QString panelTitle = QStringLiteral("Quillmender");
const auto labwcHotKey =
    QStringLiteral("<keybind key=\"C-A-space\"><action name=\"Execute\" "
                   "command=\"gapplication action com.quillmender.Quillmender transform\"/>"
                   "</keybind>");

} // namespace

void WaylandSessionFixture::startDesktop(harness::WaylandDesktop::Options options) {
    if (kind() == CompositorKind::labwc)
        options.compositor.configuration += labwcHotKey;
    WaylandDesktopTest::startDesktop(options);
    takeClipboard(offer());
}

void WaylandSessionFixture::start() {
    startDesktop();
    startProgram();
}

QList<harness::ClipboardRepresentation> WaylandSessionFixture::offer() {
    constexpr qsizetype threeMegabytes = 3'000'000;
    QByteArray large(threeMegabytes, '\0');
    for (qsizetype index = 0; index < large.size(); ++index)
        large[index] = static_cast<char>(index * 31 % 251);
    QList<harness::ClipboardRepresentation> all = harness::ClipboardOwner::textHtmlAndImage();
    all.append({"application/x-private-drawing", "application/x-private-drawing", 8, large});
    return all;
}

harness::ProductPanel WaylandSessionFixture::panel() {
    return {desktop(), programId()};
}

harness::WindowId WaylandSessionFixture::waitForPanel() {
    waitUntil([&] { return panel().isActive(); }, QStringLiteral("the panel is shown and active"));
    return desktop().windows().titled(panelTitle);
}

void WaylandSessionFixture::waitUntilPanelIsGone() {
    waitUntil([&] { return !program().process().isRunning() || !panel().isShown(); },
              QStringLiteral("the panel is gone"));
}

QPoint WaylandSessionFixture::middleOf(const Accessible &widget) {
    return panel().middleOf(widget);
}

bool WaylandSessionFixture::isToBeLogged(const QByteArray &line) {
    if (kind() == CompositorKind::labwc &&
        line.startsWith("quillmender.hotkey: there is no hot key"))
        return true;
    // What the toolkit says of a keyboard that another program has just made.
    return line == "qt.qpa.wayland: unknown keymap format: 0";
}

void WaylandSessionFixture::TearDown() {
    judgeLog();
    WaylandDesktopTest::TearDown();
    endSession();
}

} // namespace quillmender
