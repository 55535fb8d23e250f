#include "platform/linux/x11/keys/X11HotKeys.h"

#include "platform/linux/KeySymbol.h"
#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/keys/X11HotKey.h"
#include "platform/linux/x11/keys/X11Keymap.h"

namespace quillmender::x11 {

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
