#include "desktop/harness/ProductPanel.h"

#include "desktop/harness/AnyDesktop.h"

namespace quillmender::harness {

namespace {

const auto panelTitle = QStringLiteral("Quillmender");

} // namespace

bool ProductPanel::isActive() const {
    const auto panel = shown();
    return panel && panel->hasState(AccessibleState::active);
}

QPoint ProductPanel::middleOf(const Accessible &widget) const {
    const auto panel = shown();
    if (!panel)
        return widget.extents().center();
    const QRect inItsWindow = panel->extents();
    const WindowId window = desktop_.windows().titled(panelTitle);
    QRect place = desktop_.windows().geometry(window);
    if (window == 0 || place.isEmpty()) {
        place = QRect(QPoint(), inItsWindow.size());
        place.moveCenter(QRect(QPoint(), desktop_.screen()).center());
    }
    return place.topLeft() + widget.extents().center() - inItsWindow.topLeft();
}

std::optional<Accessible> ProductPanel::shown() const {
    return desktop_.accessible().find(processId_, [](const Accessible &widget) {
        const QString role = widget.roleName();
        return (role == QStringLiteral("dialog") || role == QStringLiteral("frame")) &&
               widget.name() == panelTitle && widget.hasState(AccessibleState::showing);
    });
}

} // namespace quillmender::harness
