#pragma once

#include "platform/HeldHotKey.h"
#include "platform/linux/PressGate.h"
#include "platform/linux/portal/PortalAnswer.h"

#include <QCoroTask>
#include <QDBusMessage>
#include <QTimer>

#include <memory>

namespace quillmender::portal {

class Portal;
class PortalSession;

/// A shortcut of the portal's GlobalShortcuts, with a session of its own. The desktop and the user
/// choose its keys. When the portal has ended or has closed the session, it is made anew: once a
/// minute at most by ourselves, otherwise when the portal has come back.
class PortalHotKey : public HeldHotKey {
    Q_OBJECT

  public:
    PortalHotKey(Portal &portal, QKeyCombination asked, std::function<void()> handler);
    ~PortalHotKey() override;

    /// Opens a session, and binds the shortcut where it is not bound yet, for which the user may be
    /// asked. A later call makes what this one still waits for void.
    QCoro::Task<PortalAnswer> establish();

    std::optional<QKeyCombination> keys() const override { return held_; }

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void handleActivated(const QDBusMessage &signal);
    void handleDeactivated(const QDBusMessage &signal);
    void handleShortcutsChanged(const QDBusMessage &signal);

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    void listen();
    void lose();
    void establishAgain();
    bool concernsUs(const QDBusMessage &signal) const;
    void take(const QVariant &shortcuts);
    void setHeld(std::optional<QKeyCombination> keys);

    Portal &portal_;
    const QKeyCombination asked_;
    std::shared_ptr<PortalSession> session_;
    PressGate gate_;
    QTimer pause_; ///< before a lost session is made anew
    std::optional<QKeyCombination> held_;
    quint64 establishment_ = 0; ///< the latest one
    bool isLost_ = false;       ///< there was a session, and there is none any more
    bool isRefused_ = false;    ///< by the user, who is not asked again
};

} // namespace quillmender::portal
