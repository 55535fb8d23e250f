#pragma once

#include <QList>
#include <QObject>
#include <xcb/xcb.h>

#include <optional>
#include <xkbcommon/xkbcommon.h>

namespace quillmender::x11 {

class X11Connection;

/// A key that types a symbol without any modifier.
struct KeyPosition {
    xcb_keycode_t key = 0;
    /// The group in which it does; absent when it does in the active one.
    std::optional<quint8> group;
};

/// The keyboard as the X server maps it now. Read when first asked for and again after changes.
class X11Keymap : public QObject {
    Q_OBJECT

  public:
    explicit X11Keymap(X11Connection &connection);
    ~X11Keymap() override;

    /// In the active group if it has the symbol, else in the first group that does.
    std::optional<KeyPosition> find(xkb_keysym_t symbol);

    /// Every key that types the symbol in any group.
    QList<xcb_keycode_t> keysOf(xkb_keysym_t symbol);

    /// The modifier (a bit of an event's state) that the symbol's keys set; 0 when none.
    quint16 modifierOf(xkb_keysym_t symbol);

    /// The keys that set a modifier while they are held, which leaves the locks out.
    QList<xcb_keycode_t> modifierKeys();

    quint8 activeGroup() const;
    void lockGroup(quint8 group);

    /// Whether a modifier that was pressed and let go counts for the next key (StickyKeys of the
    /// XKB protocol).
    bool hasStickyKeys() const;

    /// The modifiers, bits of an event's state, that are locked; never the locks that a keyboard
    /// shows with a lamp: Caps, Num and Scroll Lock.
    quint8 lockedModifiers();
    /// Leaves the locks with a lamp as they are.
    void lockModifiers(quint8 modifiers);

  Q_SIGNALS:
    void changed();

  private:
    void handleEvent(const xcb_generic_event_t *event);
    void load();
    quint8 modifiersWithoutLamp();
    bool types(xcb_keycode_t key, quint32 group, xkb_keysym_t symbol) const;

    X11Connection &connection_;
    xkb_context *context_;
    xkb_keymap *keymap_ = nullptr;
    quint8 firstEvent_ = 0;
    bool isStale_ = true;
    QList<QList<xcb_keycode_t>> modifierMap_;
};

} // namespace quillmender::x11
