#include "platform/linux/wayland/own/LayerPanel.h"

#include "platform/ApplicationId.h"
#include "platform/linux/wayland/RoundTrip.h"
#include "platform/linux/wayland/own/KeyboardWatch.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QWindow>

namespace quillmender::wayland {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)
} // namespace

using Layer = LayerShellQt::Window;

LayerPanel::LayerPanel(KeyboardWatch &keyboard) : keyboard_(keyboard) {
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &LayerPanel::relax);
    // The toolkit misses that a window which was hidden for a moment got the keyboard anew.
    connect(&keyboard, &KeyboardWatch::entered, this, &LayerPanel::relax, Qt::QueuedConnection);
    connect(&keyboard, &KeyboardWatch::left, this, [this] {
        if (trial_ && !trial_->isOver())
            keepAlone();
    });
}

LayerPanel::~LayerPanel() = default;

void LayerPanel::prepare(QWindow &panel) {
    panel_ = &panel;
    panel.installEventFilter(this);
    layer_ = Layer::get(&panel);
    if (!layer_)
        return;
    layer_->setScope(QString::fromLatin1(applicationId) + QStringLiteral(".panel"));
    layer_->setLayer(Layer::LayerOverlay);
    layer_->setAnchors(Layer::AnchorNone);
    layer_->setExclusiveZone(0);
    layer_->setScreenConfiguration(Layer::ScreenFromQWindow);
    want(Layer::KeyboardInteractivityExclusive);
}

void LayerPanel::aboutToShow(bool takesKeyboard) {
    comesQuietly_ = !takesKeyboard;
    if (layer_)
        layer_->setLayer(Layer::LayerOverlay);
    want(takesKeyboard ? Layer::KeyboardInteractivityExclusive : Layer::KeyboardInteractivityNone);
}

void LayerPanel::takeKeyboard() {
    comesQuietly_ = false;
    if (layer_)
        layer_->setLayer(Layer::LayerOverlay);
    if (!hasKeyboard())
        want(Layer::KeyboardInteractivityExclusive);
}

void LayerPanel::giveWay() {
    if (!layer_)
        return;
    trial_.reset();
    layer_->setLayer(Layer::LayerBottom);
    want(Layer::KeyboardInteractivityNone);
}

bool LayerPanel::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Hide && watched == panel_)
        trial_.reset();
    if (event->type() == QEvent::Expose && watched == panel_ && comesQuietly_ &&
        panel_->isExposed()) {
        // From now on a click brings it the keyboard.
        comesQuietly_ = false;
        want(Layer::KeyboardInteractivityOnDemand);
    }
    return false;
}

bool LayerPanel::hasKeyboard() const {
    return panel_ && QGuiApplication::focusWindow() == panel_;
}

void LayerPanel::want(Interactivity interactivity) {
    if (layer_ && layer_->keyboardInteractivity() != interactivity)
        layer_->setKeyboardInteractivity(interactivity);
}

void LayerPanel::relax() {
    if (!keepsOnDemand_ || !hasKeyboard() || !layer_ ||
        layer_->keyboardInteractivity() != Layer::KeyboardInteractivityExclusive)
        return;
    want(Layer::KeyboardInteractivityOnDemand);
    trial_ = std::make_unique<RoundTrip>(keyboard_.display());
    wl_display_flush(keyboard_.display());
}

void LayerPanel::keepAlone() {
    qCInfo(log, "the panel keeps the keyboard for itself while it is shown");
    trial_.reset();
    keepsOnDemand_ = false;
    want(Layer::KeyboardInteractivityExclusive);
    wl_display_flush(keyboard_.display());
}

} // namespace quillmender::wayland
