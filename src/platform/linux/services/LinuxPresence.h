#pragma once

#include "platform/Presence.h"
#include "platform/linux/WindowSystem.h"
#include "platform/linux/services/PortalAppearance.h"
#include "platform/linux/services/StatusArea.h"

#include <QObject>

#include <memory>

class QSystemTrayIcon;

namespace quillmender {

class StatusMenu;

/// Presence on a freedesktop.org desktop: StatusNotifierItem (or a tray of the X server), the
/// settings portal's colours, our own symbol drawings; windows are the window system's matter.
class LinuxPresence : public QObject, public Presence {
    Q_OBJECT

  public:
    /// `windowSystem` may be null and otherwise outlives this object.
    explicit LinuxPresence(WindowSystem *windowSystem,
                           const QDBusConnection &sessionBus = QDBusConnection::sessionBus());
    ~LinuxPresence() override;

    void setAccessoryPolicy() override;
    void showStatusItem(const StatusItem &item) override;
    void updateStatusMenuItem(int index, const QString &title, bool hidden) override;
    void applyPanelAttributes(quintptr windowId) override;
    void applyWindowAttributes(quintptr) override {}
    void activateWindow(quintptr windowId) override;
    QByteArray symbolImage(const QString &name, int pixelSize, quint32 color) override;
    Appearance appearance() override;
    void onAppearanceChange(std::function<void()> listener) override;

  private:
    void makeTrayIcon();
    void colorMenu();
    void ensureWindowIcon() const;

    WindowSystem *windowSystem_;
    PortalAppearance appearance_;
    StatusArea statusArea_;
    StatusItem item_;
    std::unique_ptr<StatusMenu> menu_;
    std::unique_ptr<QSystemTrayIcon> trayIcon_;
    std::function<void()> listener_;
};

} // namespace quillmender
