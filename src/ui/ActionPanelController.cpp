#include "ui/ActionPanelController.h"

#include "ui/ActionPanel.h"
#include "ui/ActionPickerView.h"
#include "ui/LateAppearance.h"
#include "ui/PickerKeys.h"
#include "ui/ReadyPanel.h"
#include "ui/ScreenFollower.h"
#include "ui/WindowPixels.h"
#include "ui/WindowPlacement.h"

#include <QApplication>
#include <QScreen>

#include <cmath>

namespace quillmender {

namespace {

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
    : ActionPanelController(*std::make_unique<ReadyPanel>(model, theme, ownWindows), ownWindows) {}

ActionPanelController::ActionPanelController(ReadyPanel &ready, OwnWindows &ownWindows)
    : ownWindows_(ownWindows),
      view_(ready.view()),
      panel_(ready.take()),
      keys_(std::make_unique<PickerKeys>(
          *panel_, *view_->region(), *view_->editor(),
          FreshKeys::Keyboard{
              [this] { return ownWindows_.keysDownAtFocus(panel_->windowHandle()); },
              [this](quint32 code) { return ownWindows_.isKeyDown(code); }})),
      appearance_(std::make_unique<LateAppearance>(*panel_)),
      follower_(std::make_unique<ScreenFollower>(*panel_, ActionPanel::contentSize)) {
    ownWindows_.watchForKeyboard([this](const QWindow *window, bool isWithheld) {
        if (window == panel_->windowHandle())
            view_->setKeyboardWithheld(isWithheld);
    });
    ActionPanelController::centre(std::nullopt);
    closing_.setSingleShot(true);
    closing_.callOnTimeout(panel_.get(), [this] { hideAtRest(); });
}

ActionPanelController::~ActionPanelController() {
    ownWindows_.watchForKeyboard(nullptr);
}

void ActionPanelController::getReady() {
    if (panel_->isVisible())
        return;
    panel_->winId();
    reservePixels(*panel_, ownWindows_);
}

void ActionPanelController::centre(std::optional<DesktopRect> sourceWindow) {
    QScreen *screen = sourceWindow ? screenShowing(*sourceWindow) : nullptr;
    if (!screen)
        screen = screenInUse(ownWindows_);
    if (screen)
        centreOnScreen(*panel_, *screen, ActionPanel::contentSize);
}

void ActionPanelController::makeKeyAndOrderFront() {
    view_->renderNow();
    const bool wasVisible = isVisible();
    closing_.stop();
    keys_->setClosing(false);
    if (!panel_->isVisible())
        appearance_->begin();
    panel_->show();
    panel_->raise();
    panel_->activateWindow();
    // A panel that was hidden only for a moment never lost the focus of the window system, and the
    // toolkit then misses that it is the active window again.
    if (QGuiApplication::focusWindow() == panel_->windowHandle())
        QApplication::setActiveWindow(panel_.get());
    // A control that an older run keeps disabled takes no keys.
    const QWidget *focus = panel_->focusWidget();
    // And one that nobody chose is given up, unless somebody types there by now.
    const bool isNobodys = view_->hasStopgapFocus() && keys_->untilRest().count() == 0;
    if (!wasVisible || !focus || !focus->isEnabled() || isNobodys) {
        view_->resetFocus();
        keys_->reset();
    }
    if (!wasVisible)
        paintAhead();
    ownWindows_.activate(panel_->windowHandle());
}

// In the time that the window system takes to frame and place the window, which then shows at once
// what is drawn already.
void ActionPanelController::paintAhead() {
    ownWindows_.flush();
    // The toolkit paints nothing that is not on the screen.
    panel_->setAttribute(Qt::WA_Mapped);
    // Each widget has left itself a note to be painted, and would be painted twice.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateLater);
    panel_->repaint();
}

void ActionPanelController::orderOut() {
    if (const auto aside = aside_.lock())
        aside->stayAway();
    hideAtRest();
}

void ActionPanelController::hideAtRest() {
    const auto rest = panel_->isActiveWindow() ? keys_->untilRest() : std::chrono::milliseconds(0);
    keys_->setClosing(rest.count() > 0);
    if (rest.count() > 0)
        closing_.start(rest);
    else
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
    return panel_->isVisible() && !closing_.isActive();
}

} // namespace quillmender
