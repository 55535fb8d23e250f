#pragma once

#include <QChar>
#include <QtCore/qnamespace.h>

#include <xkbcommon/xkbcommon.h>

namespace quillmender {

/// What the key types that is named by an ASCII character; `XKB_KEY_NoSymbol` for other keys.
inline xkb_keysym_t symbolOf(Qt::Key key) {
    // Both number these keys by the character, one by the capital letter, the other by the small.
    constexpr Qt::Key lastOfAscii = Qt::Key_AsciiTilde;
    if (key < Qt::Key_Space || key > lastOfAscii)
        return XKB_KEY_NoSymbol;
    return QChar::toLower(static_cast<char32_t>(key));
}

} // namespace quillmender
