#pragma once

#include "desktop/harness/UserInput.h"
#include "desktop/harness/wayland/Keymap.h"
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
/// the focus. Characters are typed on the layout that is in effect, with Shift and AltGr where it
/// wants them.
class WaylandUser : public UserInput {
  public:
    /// `screen` is what positions are counted in; `layouts` as in Keymap.
    WaylandUser(const QString &socketPath, QSize screen, const QString &layouts);

    void press(Keysym key) override;
    void release(Keysym key) override;
    void chord(const QList<Keysym> &keys) override;
    void type(const QString &text) override;
    void movePointer(QPoint position) override;
    void click(QPoint position, int button = 1) override;
    void doubleClick(QPoint position) override;

    /// The keyboard goes over to another one of its layouts, counted from 0.
    void useLayout(quint32 layout);

    bool capsLock() const { return keymap_.isLocked(XKB_MOD_NAME_CAPS); }
    bool numLock() const { return keymap_.isLocked(XKB_MOD_NAME_NUM); }

  private:
    Keymap::Stroke strokeOf(Keysym key) const;
    void pressKey(xkb_keycode_t key);
    void releaseKey(xkb_keycode_t key);
    void sendKey(xkb_keycode_t key, bool isDown);
    void sendButton(int button, bool isDown);
    quint32 now() const { return static_cast<quint32>(since_.elapsed()); }

    WaylandClient client_;
    QSize screen_;
    Keymap keymap_;
    QElapsedTimer since_;
    Held<zwp_virtual_keyboard_manager_v1> keyboards_;
    Held<zwp_virtual_keyboard_v1> keyboard_;
    Held<zwlr_virtual_pointer_manager_v1> pointers_;
    Held<zwlr_virtual_pointer_v1> pointer_;
};

} // namespace quillmender::harness
