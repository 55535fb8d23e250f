#pragma once

#include "desktop/harness/wayland/KeymapUser.h"
#include "desktop/harness/wayland/WaylandClient.h"

#include <QElapsedTimer>
#include <QSize>

struct zwlr_virtual_pointer_manager_v1;
struct zwlr_virtual_pointer_v1;
struct zwp_virtual_keyboard_manager_v1;
struct zwp_virtual_keyboard_v1;

namespace quillmender::harness {

/// A virtual keyboard and a virtual mouse of a compositor, which to programs are a seat's real
/// ones. They are there for as long as this object is: without a keyboard a seat gives no window
/// the focus.
class WaylandUser : public KeymapUser {
  public:
    /// `screen` is what positions are counted in; `layouts` as in Keymap.
    WaylandUser(const QString &socketPath, QSize screen, const QString &layouts);

    void movePointer(QPoint position) override;

    /// The keyboard goes over to another one of its layouts, counted from 0.
    void useLayout(quint32 layout);

  protected:
    void sendKey(quint32 code, bool isDown) override;
    void sendButton(quint32 code, bool isDown) override;

  private:
    quint32 now() const { return static_cast<quint32>(since_.elapsed()); }

    WaylandClient client_;
    QSize screen_;
    QElapsedTimer since_;
    Held<zwp_virtual_keyboard_manager_v1> keyboards_;
    Held<zwp_virtual_keyboard_v1> keyboard_;
    Held<zwlr_virtual_pointer_manager_v1> pointers_;
    Held<zwlr_virtual_pointer_v1> pointer_;
};

} // namespace quillmender::harness
