#include "selection/PasteboardLease.h"

#include "platform/SignalWait.h"

namespace quillmender {

QCoro::Task<Lease> PasteboardLease::acquire() {
    while (isHeld_)
        co_await SignalWait(this, &PasteboardLease::released);
    isHeld_ = true;
    ++turn_;
    co_return Lease(this, [this] {
        isHeld_ = false;
        Q_EMIT released();
    });
}

} // namespace quillmender
