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
    timer_.stop();
    piece_ = nullptr;
}

void WarmUp::goOn() {
    if (!piece_)
        return;
    if (!isQuiet_())
        timer_.start(pace_.whenBusy);
    else if (piece_())
        timer_.start(pace_.between);
    else
        stop();
}

} // namespace quillmender
