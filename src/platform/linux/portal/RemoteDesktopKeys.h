#pragma once

#include "platform/linux/portal/PortalAnswer.h"
#include "platform/linux/wayland/KeyTyping.h"
#include "platform/linux/wayland/kwin/ChordCodes.h"

#include <QObject>

#include <chrono>
#include <functional>

namespace quillmender::kwin {
class HeldModifiers;
}

namespace quillmender::portal {

class Portal;
class PortalSession;
class TokenStore;

/// Types through the portal's RemoteDesktop, with the keyboard alone. The user is asked once, and
/// only when `askUser` is called; from then on a session is opened for each use and closed behind
/// it, so that no sign of sharing stays. Who has refused is asked again only by `askUser`.
class RemoteDesktopKeys : public QObject, public wayland::KeyTyping {
    Q_OBJECT

  public:
    /// How long a question to the user may stand.
    static constexpr std::chrono::minutes askLimit{3};

    using FindCodes = std::function<QCoro::Task<kwin::ChordCodes>(wayland::TypedKeys)>;

    /// All of them outlive it. The modifiers may be null: nobody tells of them, and nothing is
    /// typed, since those that the user holds would mix with it.
    RemoteDesktopKeys(Portal &portal, TokenStore &tokens, kwin::HeldModifiers *modifiers,
                      FindCodes findCodes);

    QCoro::Task<wayland::TypedOutcome> type(wayland::TypedKeys keys,
                                            std::function<bool()> isStillMeant,
                                            std::function<void()> beforeLast) override;

    /// Has the desktop ask the user, unless the user has agreed before. Takes as long as the user
    /// takes, within `askLimit`.
    QCoro::Task<PortalAnswer> askUser();

    /// Whether typing can be tried: the user has agreed, and has not refused since.
    bool isAllowed() const;

  Q_SIGNALS:
    void allowedChanged();

  private:
    QCoro::Task<PortalAnswer> open(PortalSession &session, std::chrono::milliseconds limit);
    void noteStarted(const PortalAnswer &started);

    Portal &portal_;
    TokenStore &tokens_;
    kwin::HeldModifiers *modifiers_;
    FindCodes findCodes_;
};

} // namespace quillmender::portal
