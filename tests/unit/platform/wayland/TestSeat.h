#pragma once

#include "unit/platform/wayland/TestCompositor.h"

#include <QtGlobal>

struct wl_resource;

namespace quillmender {

/// A seat of a test compositor with one keyboard, and a surface for it to go to: of the one client
/// that has bound them.
class TestSeat {
  public:
    /// The compositor outlives it, and has ended or lost its client before it goes.
    explicit TestSeat(TestCompositor &compositor);

    /// The keyboard comes to the surface with these modifiers down.
    void enter(quint32 modifiers);
    /// It comes, and nothing is told of the modifiers.
    void enterSilently();
    void tellModifiers(quint32 depressed, quint32 latched, quint32 locked, quint32 layout);
    void leave();

  private:
    struct Requests;

    TestCompositor &compositor_;
    wl_resource *keyboard_ = nullptr;
    wl_resource *surface_ = nullptr;
};

} // namespace quillmender
