#include "platform/linux/x11/keys/X11HotKeys.h"

#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/keys/X11HotKey.h"
#include "platform/linux/x11/keys/X11Keymap.h"

#include <QChar>

namespace quillmender::x11 {

namespace {

xkb_keysym_t symbolOf(Qt::Key key) {
    // Both number these keys by the character, one by the capital letter, the other by the small.
    constexpr Qt::Key lastOfAscii = Qt::Key_AsciiTilde;
    if (key < Qt::Key_Space || key > lastOfAscii)
        return XKB_KEY_NoSymbol;
    return QChar::toLower(static_cast<char32_t>(key));
}

} // namespace

QCoro::Task<HotKeyOutcome> X11HotKeys::hold(QKeyCombination keys, std::function<void()> handler) {
    const xkb_keysym_t symbol = symbolOf(keys.key());
    if (symbol == XKB_KEY_NoSymbol)
        co_return HotKeyOutcome{nullptr, QStringLiteral("its key types no ASCII character")};
    auto hotKey =
        std::make_unique<X11HotKey>(connection_, keymap_, keys, symbol, std::move(handler));
    if (!hotKey->keys())
        qCWarning(x11Log, "%s",
                  keymap_.keysOf(symbol).isEmpty() ? "no key types the hot key's character"
                                                   : "the hot key is taken by another program");
    co_return HotKeyOutcome{std::move(hotKey), {}};
}

} // namespace quillmender::x11
