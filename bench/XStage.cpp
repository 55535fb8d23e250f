#include "bench/XStage.h"

#include "desktop/harness/Waiter.h"

namespace quillmender::bench {

using harness::waitUntil;

void XStage::waitForWindow(qint64, const QString &title) {
    waitUntil(
        [&] {
            const harness::WindowId window = desktop_.windows().titled(title);
            return window != 0 && desktop_.windows().active() == window;
        },
        title + QStringLiteral(" is active"));
}

void XStage::close(qint64, const QString &title) {
    desktop_.windows().close(desktop_.windows().titled(title));
}

void XStage::waitUntilHidden(qint64, const QString &title) {
    waitUntil([&] { return desktop_.windows().titled(title) == 0; },
              title + QStringLiteral(" is hidden"));
}

QPoint XStage::middleOf(const harness::Accessible &widget, qint64, const QString &) {
    return widget.extents().center();
}

} // namespace quillmender::bench
