#pragma once

#include "desktop/harness/AccessibleClient.h"
#include "desktop/harness/SessionBus.h"

namespace quillmender::harness {

/// The windows in which GNOME asks its user what programs may do, answered over the accessibility
/// bus.
class GnomeDialogs {
  public:
    GnomeDialogs(const SessionBus &sessionBus, const AccessibleClient &accessible)
        : sessionBus_(sessionBus),
          accessible_(accessible) {}

    /// "Add Keyboard Shortcuts".
    bool asksForKeys() const;
    /// Wait for the question; over when its window is gone.
    void acceptKeys() const;
    void refuseKeys() const;

    /// "Remote Desktop".
    bool asksForRemoteDesktop() const;
    /// With both switches on: "Allow Remote Interaction" and "Remember This Selection".
    void acceptRemoteDesktop() const;
    void refuseRemoteDesktop() const;

  private:
    using Question = bool (GnomeDialogs::*)() const;

    qint64 processOf(const QString &busName) const;
    /// What is shown under this name and is no label.
    QList<Accessible> controls(const QString &busName, const QString &name) const;
    void use(const QString &busName, const QString &name) const;
    void answer(Question question, const QString &busName, const QString &button) const;

    const SessionBus &sessionBus_;
    const AccessibleClient &accessible_;
};

} // namespace quillmender::harness
