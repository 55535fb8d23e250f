#pragma once

#include "desktop/harness/gnome/RemoteControl.h"
#include "desktop/harness/gnome/ShellEyes.h"
#include "desktop/harness/wayland/KeymapUser.h"

#include <QSize>

namespace quillmender::harness {

/// A keyboard and a mouse of a GNOME Shell. They are there for as long as this object is: without a
/// keyboard a seat gives no window the focus.
class GnomeUser : public KeymapUser {
  public:
    /// `screen` is what positions are counted in; `layouts` as in Keymap.
    GnomeUser(const QDBusConnection &bus, QSize screen, const QString &layouts);

    void movePointer(QPoint position) override;

    /// The keyboard goes over to another one of its layouts, counted from 0.
    void useLayout(quint32 layout);

  protected:
    void sendKey(quint32 code, bool isDown) override;
    void sendButton(quint32 code, bool isDown) override;

  private:
    RemoteControl control_;
    ShellEyes eyes_;
    QSize screen_;
};

} // namespace quillmender::harness
