#pragma once

#include "platform/linux/wayland/KeyTyping.h"
#include "platform/linux/wayland/kwin/ChordCodes.h"
#include "platform/linux/wayland/kwin/KwinProxies.h"

#include <QObject>

#include <functional>
#include <memory>

namespace quillmender::wayland {
class WaylandConnection;
}

namespace quillmender::kwin {

class HeldModifiers;

/// Types by org_kde_kwin_fake_input, version 4 and above. Modifiers that the user holds would mix
/// with what is typed and cannot be released for the user: nothing is typed while one is down, and
/// nothing at all where nobody tells of them.
class FakeInput : public QObject, public wayland::KeyTyping {
    Q_OBJECT

  public:
    using FindCodes = std::function<QCoro::Task<ChordCodes>(wayland::TypedKeys)>;

    /// Null when the compositor does not offer it to this program, or too old a version. The
    /// connection and the modifiers, which may be null, outlive it.
    static std::unique_ptr<FakeInput> create(wayland::WaylandConnection &connection,
                                             HeldModifiers *modifiers, FindCodes findCodes);

    QCoro::Task<wayland::TypedOutcome> type(wayland::TypedKeys keys,
                                            std::function<bool()> isStillMeant,
                                            std::function<void()> beforeLast) override;

  private:
    FakeInput(wayland::WaylandConnection &connection, HeldModifiers *modifiers,
              FindCodes findCodes);
    void press(const ChordCodes &codes);

    wayland::WaylandConnection &connection_;
    HeldModifiers *modifiers_;
    FindCodes findCodes_;
    wayland::Proxy<org_kde_kwin_fake_input> input_;
};

} // namespace quillmender::kwin
