#include "platform/linux/PasteReading.h"

#include <algorithm>

namespace quillmender {

using namespace std::chrono_literals;

void PasteReading::begin(Moment typedAt) {
    *this = {};
    typedAt_ = typedAt;
}

void PasteReading::note(Moment readAt) {
    if (!typedAt_)
        return;
    if (!first_)
        first_ = readAt;
    latest_ = readAt;
}

std::chrono::milliseconds PasteReading::rest(Moment now) const {
    const Moment::duration comingRound = *first_ - *typedAt_;
    const auto quiet = std::clamp<Moment::duration>(comingRound, 80ms, 1s);
    return std::chrono::ceil<std::chrono::milliseconds>(*latest_ + quiet - now);
}

} // namespace quillmender
