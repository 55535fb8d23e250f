#include "selection/PasteboardLease.h"

#include "platform/SignalWait.h"

namespace quillmender {

QCoro::Task<PasteboardLease::Held> PasteboardLease::acquire() {
    while (isHeld_)
        co_await SignalWait(this, &PasteboardLease::released);
    isHeld_ = true;
    ++turn_;
    co_return Held(this, Release{this});
}

void PasteboardLease::Release::operator()(PasteboardLease *) const {
    if (!lease)
        return;
    lease->isHeld_ = false;
    Q_EMIT lease->released();
}

} // namespace quillmender
