#include "bench/WaylandStage.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace quillmender::bench {

using harness::Accessible;
using harness::AccessibleState;
using harness::waitUntil;

namespace {

harness::WaylandDesktop::Options optionsOf(harness::CompositorKind kind) {
    const QStringList missing = harness::Compositor::missingPrograms(kind);
    if (!missing.isEmpty())
        throw harness::HarnessError(
            QStringLiteral("not installed: %1").arg(missing.join(QStringLiteral(", "))));
    harness::WaylandDesktop::Options options;
    options.kind = kind;
    return options;
}

} // namespace

WaylandStage::WaylandStage(harness::CompositorKind kind) : desktop_(optionsOf(kind)) {}

void WaylandStage::waitForWindow(qint64 processId, const QString &title) {
    waitUntil(
        [&] {
            const auto window = shown(processId, title);
            return window && window->hasState(AccessibleState::active);
        },
        title + QStringLiteral(" is active"));
}

void WaylandStage::close(qint64 processId, const QString &) {
    const auto button = desktop_.accessible().find(processId, QStringLiteral("push button"),
                                                   QStringLiteral("Close"));
    if (button)
        button->doAction();
    else
        desktop_.input().chord({XKB_KEY_Escape});
}

void WaylandStage::waitUntilHidden(qint64 processId, const QString &title) {
    waitUntil([&] { return !shown(processId, title); }, title + QStringLiteral(" is hidden"));
}

QPoint WaylandStage::middleOf(const Accessible &widget, qint64 processId, const QString &title) {
    // Programs do not know where on the screen they are; the layer is in its middle.
    const auto window = shown(processId, title);
    const QRect inside = window ? window->extents() : QRect();
    QRect middle(QPoint(), inside.size());
    middle.moveCenter(QRect(QPoint(), desktop_.compositor().screen()).center());
    return middle.topLeft() + widget.extents().center() - inside.topLeft();
}

std::optional<Accessible> WaylandStage::shown(qint64 processId, const QString &title) {
    return desktop_.accessible().find(processId, [&](const Accessible &widget) {
        // What kind of a window it is does not matter, and labels have titles, too.
        return widget.name() == title && widget.roleName() != QStringLiteral("label") &&
               widget.roleName() != QStringLiteral("application") &&
               widget.hasState(AccessibleState::showing);
    });
}

} // namespace quillmender::bench
