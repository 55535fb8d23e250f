#include "platform/linux/x11/selection/PasteReaders.h"

#include "platform/linux/x11/windows/WindowOwnership.h"

#include <algorithm>

namespace quillmender::x11 {

void PasteReaders::typeChord(xcb_window_t window) {
    window_ = window;
    typeChordForAnybody();
}

void PasteReaders::typeChordForAnybody() {
    typedAt_ = std::chrono::steady_clock::now();
    reading_.begin(*typedAt_);
}

bool PasteReaders::add(xcb_window_t requestor, Moment askedAt) {
    // A long transfer may be of what was there before.
    if (askedAt < lentAt_)
        return false;
    if (!typedAt_ || askedAt < *typedAt_) {
        early_.insert(requestor);
        return false;
    }
    if (window_ != XCB_WINDOW_NONE && !isActingFor(connection_, requestor, window_))
        return false;
    reading_.note(std::chrono::steady_clock::now());
    return true;
}

bool PasteReaders::isReadEarly() const {
    return window_ != XCB_WINDOW_NONE &&
           std::any_of(early_.cbegin(), early_.cend(), [this](xcb_window_t reader) {
               return isActingFor(connection_, reader, window_);
           });
}

} // namespace quillmender::x11
