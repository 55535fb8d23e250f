#include "selection/PasteboardLease.h"

#include <QCoroSignal>

namespace quillmender {

QCoro::Task<PasteboardLease::Held> PasteboardLease::acquire() {
    while (isHeld_)
        co_await qCoro(this, &PasteboardLease::released);
    isHeld_ = true;
    ++turn_;
    co_return Held(this);
}

void PasteboardLease::Release::operator()(PasteboardLease *lease) const {
    lease->isHeld_ = false;
    Q_EMIT lease->released();
}

} // namespace quillmender
