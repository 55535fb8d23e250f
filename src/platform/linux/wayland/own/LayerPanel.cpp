#include "platform/linux/wayland/own/LayerPanel.h"

#include "platform/ApplicationId.h"
#include "platform/linux/wayland/RoundTrip.h"
#include "platform/linux/wayland/own/KeyboardWatch.h"

#include <QExposeEvent>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QWindow>

namespace quillmender::wayland {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)
} // namespace

using Layer = LayerShellQt::Window;

LayerPanel::LayerPanel(KeyboardWatch &keyboard) : keyboard_(keyboard) {}

LayerPanel::~LayerPanel() = default;

void LayerPanel::prepare(QWindow &panel) {
    panel_ = &panel;
    isOnScreen_ = false;
    panel.installEventFilter(this);
    layer_ = Layer::get(&panel);
    if (!layer_)
        return;
    layer_->setScope(QString::fromLatin1(applicationId) + QStringLiteral(".panel"));
    layer_->setAnchors(Layer::AnchorNone);
    layer_->setExclusiveZone(0);
}

void LayerPanel::aboutToShow(bool takesKeyboard) {
    takesKeyboard_ = takesKeyboard;
    isOnScreen_ = false;
    if (layer_)
        layer_->setLayer(Layer::LayerOverlay);
    want(takesKeyboard ? way_ : Layer::KeyboardInteractivityNone);
}

void LayerPanel::takeKeyboard() {
    if (!layer_ || QGuiApplication::focusWindow() == panel_)
        return;
    if (!isOnScreen_) {
        takesKeyboard_ = true;
        want(way_);
    } else if (way_ == Layer::KeyboardInteractivityExclusive && panel_->isExposed()) {
        layer_->setLayer(Layer::LayerOverlay);
        want(way_);
        commit();
    } else {
        // One that is there already gets it by a click alone, and the toolkit says nothing to the
        // compositor of one that is covered.
        panel_->hide();
        panel_->show();
    }
}

void LayerPanel::giveWay() {
    trial_.reset();
    if (!layer_)
        return;
    layer_->setLayer(Layer::LayerBottom);
    want(Layer::KeyboardInteractivityNone);
    commit();
}

bool LayerPanel::eventFilter(QObject *watched, QEvent *event) {
    if (watched != panel_)
        return false;
    if (event->type() == QEvent::Hide) {
        isOnScreen_ = false;
        trial_.reset();
    } else if (event->type() == QEvent::Expose && panel_->isExposed() && !isOnScreen_) {
        isOnScreen_ = true;
        // When it has been painted, which shows it.
        QMetaObject::invokeMethod(this, &LayerPanel::appeared, Qt::QueuedConnection);
    }
    return false;
}

void LayerPanel::appeared() {
    if (!isOnScreen_ || !layer_)
        return;
    if (!takesKeyboard_) {
        // From now on a click brings it.
        want(Layer::KeyboardInteractivityOnDemand);
        commit();
    } else if (way_ == Layer::KeyboardInteractivityOnDemand) {
        tryOnDemand();
    }
}

void LayerPanel::tryOnDemand() {
    trial_ = std::make_unique<RoundTrip>(keyboard_.display());
    connect(trial_.get(), &RoundTrip::over, this, &LayerPanel::decide);
    wl_display_flush(keyboard_.display());
}

void LayerPanel::decide() {
    trial_.release()->deleteLater();
    if (!keyboard_.isHere() && keyboard_.isAwaited()) {
        // One that was plugged in together with the panel may be here without our knowing it yet.
        tryOnDemand();
        return;
    }
    // It may have come and gone in between.
    if (keyboard_.isHere() || !keyboard_.isAny()) {
        qCInfo(log, "the panel has the keyboard on demand");
        return;
    }
    qCInfo(log, "the panel has the keyboard for itself while it is shown");
    way_ = Layer::KeyboardInteractivityExclusive;
    want(way_);
    commit();
}

void LayerPanel::want(Interactivity interactivity) {
    if (layer_ && layer_->keyboardInteractivity() != interactivity)
        layer_->setKeyboardInteractivity(interactivity);
}

// What is wanted takes effect with the next picture, and there may be nothing new to paint.
void LayerPanel::commit() {
    if (!panel_ || !isOnScreen_)
        return;
    QExposeEvent event(QRegion(0, 0, 1, 1));
    QCoreApplication::sendEvent(panel_, &event);
    wl_display_flush(keyboard_.display());
}

} // namespace quillmender::wayland
