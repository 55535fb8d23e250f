#pragma once

#include "desktop/harness/UserInput.h"
#include "desktop/harness/wayland/Keymap.h"

namespace quillmender::harness {

/// A user whose keyboard is known key by key: characters are typed on the layout that is in effect,
/// with Shift and AltGr where it wants them.
class KeymapUser : public UserInput {
  public:
    void press(Keysym key) override;
    void release(Keysym key) override;
    void chord(const QList<Keysym> &keys) override;
    void type(const QString &text) override;
    void click(QPoint position, int button = 1) override;
    void doubleClick(QPoint position) override;

    bool capsLock() const { return keymap_.isLocked(XKB_MOD_NAME_CAPS); }
    bool numLock() const { return keymap_.isLocked(XKB_MOD_NAME_NUM); }

  protected:
    /// `layouts` as in Keymap.
    explicit KeymapUser(const QString &layouts) : keymap_(layouts) {}

    /// By the kernel's codes of keys and buttons. The keymap has the change already.
    virtual void sendKey(quint32 code, bool isDown) = 0;
    virtual void sendButton(quint32 code, bool isDown) = 0;

    Keymap &keymap() { return keymap_; }

  private:
    Keymap::Stroke strokeOf(Keysym key) const;
    void pressKey(xkb_keycode_t key);
    void releaseKey(xkb_keycode_t key);

    Keymap keymap_;
};

} // namespace quillmender::harness
