#include "platform/linux/x11/selection/LateReader.h"

#include "platform/linux/x11/keys/ChordWatch.h"
#include "platform/linux/x11/selection/SelectionOwner.h"

namespace quillmender::x11 {

using namespace std::chrono_literals;

LateReader::LateReader(const ChordWatch &watch, SelectionOwner &clipboard, SelectionOwner &primary)
    : watch_(watch),
      clipboard_(clipboard),
      primary_(primary) {
    end_.setSingleShot(true);
    connect(&end_, &QTimer::timeout, this, &LateReader::forgive);
    // Refused one target, an application asks for the next.
    connect(&watch_, &ChordWatch::settled, this, [this] { end_.start(1s); });
}

bool LateReader::isLate(xcb_window_t window) const {
    return window != XCB_WINDOW_NONE && watch_.pending(Chord::paste) == window;
}

void LateReader::refuse(xcb_window_t window) {
    end_.stop();
    tellOwners(window);
}

void LateReader::forgive() {
    end_.stop();
    tellOwners(XCB_WINDOW_NONE);
}

void LateReader::tellOwners(xcb_window_t window) {
    clipboard_.refuse(window);
    primary_.refuse(window);
}

} // namespace quillmender::x11
