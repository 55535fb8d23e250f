#pragma once

#include <cstdlib>
#include <memory>

namespace quillmender {

struct XcbDeleter {
    void operator()(void *memory) const { std::free(memory); }
};

/// A reply, event or error that xcb handed over; null where xcb answered none.
template <typename Type> using XcbPointer = std::unique_ptr<Type, XcbDeleter>;

template <typename Type> XcbPointer<Type> adoptXcb(Type *memory) {
    return XcbPointer<Type>(memory);
}

/// xcb's events share their first byte; the rest depends on it.
template <typename Event, typename Generic> const Event &eventCast(const Generic *event) {
    return *reinterpret_cast<const Event *>(event);
}

} // namespace quillmender
