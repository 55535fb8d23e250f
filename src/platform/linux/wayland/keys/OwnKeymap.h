#pragma once

#include <QByteArray>
#include <QList>

#include <memory>
#include <optional>
#include <xkbcommon/xkbcommon.h>

namespace quillmender::wayland {

/// A keyboard map that is made here rather than the session's, which may have no Latin letters.
class OwnKeymap {
  public:
    /// Of a layout of the system's keyboard data, such as `us` or `us,ru`; the default one when it
    /// is empty. Absent when there is none of that name.
    static std::optional<OwnKeymap> make(const QByteArray &layout);

    /// The keys that type the symbol in the first layout without any modifier, or in any when that
    /// one has none: numbers of the kernel, to which the keyboard map's own add `codeOffset`.
    QList<quint32> keysOf(xkb_keysym_t symbol) const;

    /// The bit of a modifier, by its name in the map; 0 when the map has none.
    quint32 modifier(const char *name) const;

    /// In the form that it travels in, with the null character at its end.
    QByteArray text() const;

    static constexpr quint32 codeOffset = 8;

  private:
    struct Deleter {
        void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
    };

    explicit OwnKeymap(xkb_keymap *keymap) : keymap_(keymap) {}

    std::unique_ptr<xkb_keymap, Deleter> keymap_;
};

} // namespace quillmender::wayland
