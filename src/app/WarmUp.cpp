#include "app/WarmUp.h"

#include <utility>

namespace quillmender {

WarmUp::WarmUp(std::function<bool()> isQuiet, Piece piece, Pace pace)
    : isQuiet_(std::move(isQuiet)),
      piece_(std::move(piece)),
      pace_(pace) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &WarmUp::goOn);
}

void WarmUp::start() {
    timer_.start(pace_.afterStart);
}

void WarmUp::stop() {
    // The piece may be on the stack.
    isStopped_ = true;
    timer_.stop();
}

void WarmUp::goOn() {
    if (!isQuiet_()) {
        timer_.start(pace_.whenBusy);
        return;
    }
    const bool isMore = piece_();
    if (isMore && !isStopped_)
        timer_.start(pace_.between);
}

} // namespace quillmender
