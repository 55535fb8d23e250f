#pragma once

#include "platform/Appearance.h"
#include "platform/StatusItem.h"
#include "platform/linux/services/StatusArea.h"

#include <QObject>

#include <memory>

class QSystemTrayIcon;

namespace quillmender {

class TrayMenu;

/// An item in a freedesktop.org desktop's status area: a StatusNotifierItem, or an icon in a tray
/// of the window system.
class TrayStatusItem : public QObject, public StatusItem {
    Q_OBJECT

  public:
    /// The menu follows the appearance. `tray` is null where windows have no place of their own
    /// choosing: there the menu is the host's to show, and whoever activates the item itself gets
    /// what the first line does. Both outlive this object.
    TrayStatusItem(Appearance &appearance, WindowSystemTray *tray,
                   const QDBusConnection &sessionBus = QDBusConnection::sessionBus());
    ~TrayStatusItem() override;

    void show(const StatusItemContents &contents) override;
    void updateMenuItem(int index, const QString &title, bool hidden) override;

  private:
    void makeTrayIcon();
    void activate();
    void colorMenu();

    Appearance &appearance_;
    bool placesMenu_;
    StatusArea statusArea_;
    StatusItemContents contents_;
    std::unique_ptr<TrayMenu> menu_;
    std::unique_ptr<QSystemTrayIcon> trayIcon_;
};

} // namespace quillmender
