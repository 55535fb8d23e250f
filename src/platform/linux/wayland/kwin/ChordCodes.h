#pragma once

#include "platform/linux/wayland/KeyTyping.h"

#include <QByteArray>

namespace quillmender::kwin {

/// The two keys of a combination, as the kernel numbers them (linux/input-event-codes.h).
struct ChordCodes {
    quint32 modifier = 0;
    quint32 key = 0;

    friend bool operator==(const ChordCodes &, const ChordCodes &) = default;
};

/// The keys by which applications understand the combination while that layout of the keyboard map
/// is the active one: the key that bears the letter there, else in the first layout that has it,
/// else the one in the place that it has on an American keyboard. So toolkits look for the letters
/// of shortcuts. A keymap that is none is a keyboard without letters.
ChordCodes codesOf(wayland::TypedKeys keys, const QByteArray &keymap, quint32 layout);

} // namespace quillmender::kwin
