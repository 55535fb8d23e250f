#include "platform/linux/x11/selection/LateCopy.h"

#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/keys/ChordWatch.h"
#include "platform/linux/x11/windows/WindowOwnership.h"

#include <utility>

namespace quillmender::x11 {

LateCopy::LateCopy(X11Connection &connection, const ChordWatch &watch)
    : connection_(connection),
      watch_(watch) {
    connect(&watch_, &ChordWatch::settled, this, &LateCopy::forget);
}

void LateCopy::expect(const QList<PasteboardItem> &restored) {
    if (watch_.pending(Chord::copy) != XCB_WINDOW_NONE)
        restored_ = restored;
}

std::optional<QList<PasteboardItem>> LateCopy::undoneFor(xcb_window_t owner) {
    std::optional<QList<PasteboardItem>> restored = std::exchange(restored_, std::nullopt);
    const xcb_window_t late = watch_.pending(Chord::copy);
    if (!restored || owner == XCB_WINDOW_NONE || !isSameApplication(connection_, owner, late))
        return std::nullopt;
    qCInfo(x11Log, "window 0x%x copied too late", late);
    return restored;
}

} // namespace quillmender::x11
