#include "desktop/wayland/sessions/WaylandSessionFixture.h"

#include "desktop/harness/ClipboardOwner.h"

namespace quillmender {

using harness::Accessible;
using harness::AccessibleState;
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

std::optional<Accessible> WaylandSessionFixture::shownPanel() {
    return desktop().accessible().find(programId(), [](const Accessible &widget) {
        const QString role = widget.roleName();
        return (role == QStringLiteral("dialog") || role == QStringLiteral("frame")) &&
               widget.name() == panelTitle && widget.hasState(AccessibleState::showing);
    });
}

harness::WindowId WaylandSessionFixture::waitForPanel() {
    waitUntil(
        [&] {
            const auto panel = shownPanel();
            return panel && panel->hasState(AccessibleState::active);
        },
        QStringLiteral("the panel is shown and active"));
    return desktop().windows().titled(panelTitle);
}

void WaylandSessionFixture::waitUntilPanelIsGone() {
    waitUntil([&] { return !program().process().isRunning() || !shownPanel(); },
              QStringLiteral("the panel is gone"));
}

QPoint WaylandSessionFixture::middleOf(const Accessible &widget) {
    // Programs do not know where on the screen they are, and count from their window's corner.
    const auto panel = shownPanel();
    if (!panel)
        return widget.extents().center();
    const QRect inItsWindow = panel->extents();
    const harness::WindowId window = desktop().windows().titled(panelTitle);
    QPoint corner = desktop().windows().geometry(window).topLeft();
    if (window == 0 || desktop().windows().geometry(window).isEmpty()) {
        QRect middle(QPoint(), inItsWindow.size());
        middle.moveCenter(QRect(QPoint(), desktop().compositor().screen()).center());
        corner = middle.topLeft();
    }
    return corner + widget.extents().center() - inItsWindow.topLeft();
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
