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

    /// "Add Keyboard Shortcuts". Null while nobody is asked.
    std::optional<Accessible> keys() const;
    /// Wait for the question; over when its window is gone.
    void acceptKeys() const;
    void refuseKeys() const;

    /// "Remote Desktop".
    std::optional<Accessible> remoteDesktop() const;
    /// Switches "Allow Remote Interaction" on; "Remember This Selection" as it is asked to.
    void acceptRemoteDesktop(bool isRemembered) const;
    void refuseRemoteDesktop() const;

    /// Both windows, widget by widget.
    QString tree() const;

  private:
    using Question = std::optional<Accessible> (GnomeDialogs::*)() const;

    qint64 processOf(const QString &busName) const;
    /// A shown control of this name.
    std::optional<Accessible> control(const QString &busName, const QString &name) const;
    void use(const QString &busName, const QString &name) const;
    void answer(Question question, const QString &busName, const QString &button) const;

    const SessionBus &sessionBus_;
    const AccessibleClient &accessible_;
};

} // namespace quillmender::harness
