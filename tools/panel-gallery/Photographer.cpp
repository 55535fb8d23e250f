#include "Photographer.h"

#include "States.h"
#include "ui/ActionPanel.h"
#include "ui/ScrollRegion.h"

#include <QScrollBar>
#include <QTimer>

namespace quillmender {

namespace {
constexpr int settleMilliseconds = 60;
} // namespace

Photographer::Photographer(Theme &theme, OwnWindows &ownWindows, QString folder)
    : theme_(theme),
      ownWindows_(ownWindows),
      folder_(std::move(folder)),
      waiting_(galleryStates()) {}

void Photographer::start() {
    QTimer::singleShot(0, this, &Photographer::showNext);
}

void Photographer::showNext() {
    controller_.reset();
    if (waiting_.isEmpty()) {
        Q_EMIT finished();
        return;
    }
    state_ = waiting_.takeFirst();
    model_ = std::make_unique<GalleryModel>();
    enterState(*model_, state_);
    controller_ = std::make_unique<ActionPanelController>(*model_, theme_, ownWindows_);
    controller_->makeKeyAndOrderFront();
    QTimer::singleShot(settleMilliseconds, this, &Photographer::takePictures);
}

void Photographer::takePictures() {
    controller_->panel()->grab().save(QStringLiteral("%1/%2.png").arg(folder_, state_));
    scrollPanel(*controller_, 100);
    controller_->panel()->grab().save(QStringLiteral("%1/%2-end.png").arg(folder_, state_));
    showNext();
}

void scrollPanel(const ActionPanelController &controller, int percent) {
    QScrollBar *bar = controller.panel()->findChild<ScrollRegion *>()->verticalScrollBar();
    bar->setValue(bar->maximum() * percent / 100);
}

} // namespace quillmender
