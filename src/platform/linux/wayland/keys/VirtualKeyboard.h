#pragma once

#include "platform/linux/wayland/KeyTyping.h"
#include "platform/linux/wayland/keys/KeyboardProxies.h"
#include "platform/linux/wayland/keys/MemoryFile.h"
#include "platform/linux/wayland/keys/OwnKeymap.h"

#include <QElapsedTimer>
#include <QPointer>

#include <memory>

namespace quillmender::wayland {

class WaylandConnection;

/// Keys through a keyboard of our own (`zwp_virtual_keyboard_v1`) with our own map, since that of
/// the session may have no Latin letters. There is one for each chord and none in between, so that
/// the compositor's keyboards are the user's alone. What the user holds on another keyboard does
/// not mix with it, and is not waited for.
class VirtualKeyboard : public KeyTyping {
  public:
    /// Null when the compositor has no such keyboards, or there is no map for one.
    static std::unique_ptr<VirtualKeyboard> create(WaylandConnection &connection);

    QCoro::Task<TypedOutcome> type(TypedKeys keys, std::function<bool()> isStillMeant,
                                   std::function<void()> beforeLast) override;

  private:
    struct Stroke {
        quint32 modifierKey = 0;
        quint32 modifier = 0; ///< its bit
        quint32 key = 0;
    };

    VirtualKeyboard(WaylandConnection &connection, Proxy<zwp_virtual_keyboard_manager_v1> manager,
                    const OwnKeymap &keymap);

    static Stroke strokeOf(TypedKeys keys, const OwnKeymap &keymap);
    void press(const Stroke &stroke, const std::function<void()> &beforeLast);

    QPointer<WaylandConnection> connection_;
    Proxy<zwp_virtual_keyboard_manager_v1> manager_;
    MemoryFile keymap_;
    Stroke controlC_;
    Stroke controlV_;
    Stroke shiftInsert_;
    QElapsedTimer clock_;
};

} // namespace quillmender::wayland
