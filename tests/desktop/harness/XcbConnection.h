#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <optional>

namespace quillmender::harness {

struct FreeDeleter {
    void operator()(void *memory) const { std::free(memory); }
};

/// An X reply or event, freed by its owner.
template <typename T> using XcbPointer = std::unique_ptr<T, FreeDeleter>;

/// One connection to an X server.
class XcbConnection {
  public:
    /// Throws HarnessError when the server does not answer.
    explicit XcbConnection(const QString &display);
    XcbConnection(const XcbConnection &) = delete;
    XcbConnection &operator=(const XcbConnection &) = delete;
    ~XcbConnection();

    xcb_connection_t *get() const { return connection_; }
    xcb_screen_t *screen() const { return screen_; }
    xcb_window_t root() const { return screen_->root; }

    xcb_atom_t atom(const QByteArray &name);
    QByteArray atomName(xcb_atom_t atom);

    /// All bytes of a property; absent when the window has none of that name.
    std::optional<QByteArray> property(xcb_window_t window, const QByteArray &name);

    /// The first 32-bit element of a property.
    std::optional<quint32> cardinal(xcb_window_t window, const QByteArray &name);

    /// An unmapped window of 1 by 1 that hears of its property changes.
    xcb_window_t createHiddenWindow();

    /// Returns when the server has handled everything that was sent.
    void roundTrip();

  private:
    xcb_connection_t *connection_;
    xcb_screen_t *screen_ = nullptr;
    QHash<QByteArray, xcb_atom_t> atoms_;
};

} // namespace quillmender::harness
