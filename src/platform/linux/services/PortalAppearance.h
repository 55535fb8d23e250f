#pragma once

#include "platform/Presence.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

namespace quillmender {

/// The desktop's colours as the settings portal tells them (namespace
/// `org.freedesktop.appearance`). Asked without waiting; until an answer comes, and on a desktop
/// without the portal, there is no preference.
class PortalAppearance : public QObject {
    Q_OBJECT

  public:
    explicit PortalAppearance(QDBusConnection bus);

    const Appearance &current() const { return current_; }

  Q_SIGNALS:
    void changed();

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void settingChanged(const QDBusMessage &signal);

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    void readAll();
    void accept(const Appearance &appearance);

    QDBusConnection bus_;
    QDBusServiceWatcher portal_;
    Appearance current_;
};

} // namespace quillmender
