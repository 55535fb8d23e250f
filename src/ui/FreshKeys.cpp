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

FreshKeys::FreshKeys(Keyboard keyboard) : keyboard_(std::move(keyboard)) {}

bool FreshKeys::isFresh(const QKeyEvent &event) {
    const quint64 key = identity(event);
    if (!foreign_)
        foreign_ = keyboard_.downAtFocus();
    const quint32 code = event.nativeScanCode();
    if (event.type() == QEvent::KeyPress) {
        if (foreign_->contains(code))
            return false;
        if (!event.isAutoRepeat())
            down_.insert(key);
        return down_.contains(key);
    }
    const bool wasDown = down_.contains(key);
    // A server that repeats a key says release and press. When the second comes late, the toolkit
    // takes the pair for an end and a new press, but the key is still down.
    if (!event.isAutoRepeat() && !(foreign_->contains(code) && keyboard_.isDown(code))) {
        down_.remove(key);
        foreign_->remove(code);
    }
    return wasDown;
}

void FreshKeys::forget() {
    down_.clear();
    foreign_.reset();
}

} // namespace quillmender
