#pragma once

#include <QLoggingCategory>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace quillmender::x11 {

/// Never given contents of selections, only names of targets, windows and errors.
Q_DECLARE_LOGGING_CATEGORY(x11Log)

struct XcbDeleter {
    void operator()(void *memory) const { std::free(memory); }
};

/// A reply, event or error that xcb handed over; null where xcb answered none.
template <typename Type> using XcbPointer = std::unique_ptr<Type, XcbDeleter>;

template <typename Type> XcbPointer<Type> adoptXcb(Type *memory) {
    return XcbPointer<Type>(memory);
}

/// The reply to a question; null when the server answered with an error, as it does for a window
/// that has gone, or the connection is lost.
template <typename Reply, typename Cookie>
XcbPointer<Reply> replyTo(xcb_connection_t *connection,
                          Reply *(*receive)(xcb_connection_t *, Cookie, xcb_generic_error_t **),
                          Cookie question) {
    xcb_generic_error_t *error = nullptr;
    auto reply = adoptXcb(receive(connection, question, &error));
    std::free(error);
    return reply;
}

/// xcb's events share their first byte; the rest depends on it.
template <typename Event, typename Generic> const Event &eventCast(const Generic *event) {
    return *reinterpret_cast<const Event *>(event);
}

} // namespace quillmender::x11
