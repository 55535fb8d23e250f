#pragma once

#include "platform/Appearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

namespace quillmender {

/// The desktop's colours as the settings portal tells them (namespace
/// `org.freedesktop.appearance`). Asked without waiting; until an answer comes, and on a desktop
/// without the portal, there is no preference.
class PortalAppearance : public QObject, public Appearance {
    Q_OBJECT

  public:
    explicit PortalAppearance(QDBusConnection bus = QDBusConnection::sessionBus());

    DesktopColors colors() override { return current_; }
    void onChange(std::function<void()> listener) override { listener_ = std::move(listener); }

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void settingChanged(const QDBusMessage &signal);

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    void readAll();
    void accept(const DesktopColors &colors);

    QDBusConnection bus_;
    QDBusServiceWatcher portal_;
    DesktopColors current_;
    std::function<void()> listener_;
};

} // namespace quillmender
