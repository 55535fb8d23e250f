#pragma once

#include "platform/Permission.h"
#include "platform/linux/portal/PortalAnswer.h"

namespace quillmender::portal {

class Portal;
class RemoteDesktopKeys;

/// The user's word that keys may be typed through the portal. Finds out by itself whether the
/// portal can ask at all, which needs no answer of the user's.
class RemoteDesktopPermission : public Permission {
    Q_OBJECT

  public:
    /// Both outlive it.
    RemoteDesktopPermission(Portal &portal, RemoteDesktopKeys &keys);

    State state() const override;
    QString sentence() const override;
    void ask() override;

  private:
    void probe();
    void noteAnswer(const PortalAnswer &answer);

    Portal &portal_;
    RemoteDesktopKeys &keys_;
    QString trouble_; ///< with the latest question
    bool isOffered_ = false;
    bool isAsked_ = false;
};

} // namespace quillmender::portal
