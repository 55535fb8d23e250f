#include "platform/SignalWait.h"

#include "platform/Clock.h"

namespace quillmender {

bool SignalWait::await_resume() const {
    if (relay_->isEmitterGone())
        throw CancellationError();
    return relay_->hasReceived();
}

} // namespace quillmender
