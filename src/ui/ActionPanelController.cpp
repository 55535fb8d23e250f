#include "ui/ActionPanelController.h"

#include "ui/ActionPanel.h"
#include "ui/ActionPickerView.h"
#include "ui/WindowPlacement.h"

#include <QApplication>
#include <QScreen>

#include <cmath>

namespace quillmender {

namespace {

constexpr QSize contentSize(620, 620);

// A screen's origin is in device pixels; only its size is scaled.
QRect devicePixels(const QScreen &screen) {
    const double ratio = screen.devicePixelRatio();
    const QSize size = screen.geometry().size();
    return QRect(screen.geometry().topLeft(), QSize(int(std::lround(size.width() * ratio)),
                                                    int(std::lround(size.height() * ratio))));
}

QScreen *screenShowing(const DesktopRect &window) {
    const QRect area(window.x, window.y, window.width, window.height);
    QScreen *best = nullptr;
    qint64 largest = 0;
    for (QScreen *screen : QGuiApplication::screens()) {
        const QRect shown = devicePixels(*screen).intersected(area);
        const qint64 size = qint64(shown.width()) * shown.height();
        if (!shown.isEmpty() && size > largest) {
            best = screen;
            largest = size;
        }
    }
    return best;
}

} // namespace

ActionPanelController::ActionPanelController(ActionPickerModel &model, Theme &theme,
                                             OwnWindows &ownWindows)
    : ownWindows_(ownWindows),
      view_(new ActionPickerView(model, theme, {GridColumn(), GridColumn()})),
      panel_(std::make_unique<ActionPanel>(view_)) {
    QObject::connect(panel_.get(), &ActionPanel::nativeWindowMade, panel_.get(), [this] {
        ownWindows_.applyPanelAttributes(panel_->windowHandle());
        // A toolkit that keeps it free by itself takes the larger of both.
        panel_->setContentsMargins(0, ownWindows_.coveredHeight(panel_->windowHandle()), 0, 0);
    });
    ActionPanelController::centre(std::nullopt);
}

ActionPanelController::~ActionPanelController() = default;

void ActionPanelController::centre(std::optional<DesktopRect> sourceWindow) {
    QScreen *screen = sourceWindow ? screenShowing(*sourceWindow) : nullptr;
    if (!screen)
        screen = screenInUse();
    if (screen)
        centreOnScreen(*panel_, *screen, contentSize);
}

void ActionPanelController::makeKeyAndOrderFront() {
    view_->renderNow();
    const bool wasVisible = panel_->isVisible();
    panel_->show();
    panel_->raise();
    panel_->activateWindow();
    ownWindows_.activate(panel_->windowHandle());
    // A panel that was hidden only for a moment never lost the focus of the window system, and the
    // toolkit then misses that it is the active window again.
    if (QGuiApplication::focusWindow() == panel_->windowHandle())
        QApplication::setActiveWindow(panel_.get());
    // A control that an older run keeps disabled takes no keys.
    const QWidget *focus = panel_->focusWidget();
    if (!wasVisible || !focus || !focus->isEnabled())
        view_->resetFocus();
}

void ActionPanelController::orderOut() {
    if (const auto aside = aside_.lock())
        aside->stayAway();
    panel_->hide();
}

std::shared_ptr<SteppedAside> ActionPanelController::stepAside() {
    std::shared_ptr<SteppedAside> aside = aside_.lock();
    // Another write-back has hidden it: it comes back when both have ended.
    if (!panel_->isVisible())
        return aside;
    if (aside)
        aside->stayAway();
    aside = ownWindows_.stepAside(panel_->windowHandle());
    aside_ = aside;
    // A widget whose window alone was hidden counts as shown, and could not be shown again.
    if (aside)
        panel_->hide();
    return aside;
}

bool ActionPanelController::isVisible() const {
    return panel_->isVisible();
}

} // namespace quillmender
