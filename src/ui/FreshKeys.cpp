#include "ui/FreshKeys.h"

#include <QKeyEvent>

#include <utility>

namespace quillmender {

namespace {

/// A key on the keyboard: what it means can change between press and release.
quint64 identity(const QKeyEvent &event) {
    constexpr quint64 isMeaning = quint64(1) << 32;
    return event.nativeScanCode() != 0 ? event.nativeScanCode() : isMeaning | quint32(event.key());
}

} // namespace

FreshKeys::FreshKeys(std::function<QSet<quint32>()> downAtFocus)
    : downAtFocus_(std::move(downAtFocus)) {}

bool FreshKeys::isFresh(const QKeyEvent &event) {
    const quint64 key = identity(event);
    if (!foreign_)
        foreign_ = downAtFocus_();
    const quint32 code = event.nativeScanCode();
    if (event.type() == QEvent::KeyPress && foreign_->contains(code))
        return false;
    if (event.type() == QEvent::KeyRelease) {
        released_ = {key, event.timestamp(), down_.contains(key)};
        if (!event.isAutoRepeat()) {
            down_.remove(key);
            foreign_->remove(code);
        }
        return released_.wasDown;
    }
    // A server that repeats a key says release and press with one time. When the second comes late,
    // the toolkit takes the pair for a new press.
    const bool isLatePair =
        event.timestamp() != 0 && key == released_.key && event.timestamp() == released_.time;
    if (!event.isAutoRepeat() && (!isLatePair || released_.wasDown))
        down_.insert(key);
    return down_.contains(key);
}

void FreshKeys::forget() {
    down_.clear();
    foreign_.reset();
    released_ = {};
}

} // namespace quillmender
