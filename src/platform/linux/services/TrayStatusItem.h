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
    /// The menu follows the appearance. `tray` may be null. Both outlive this object.
    TrayStatusItem(Appearance &appearance, WindowSystemTray *tray,
                   const QDBusConnection &sessionBus = QDBusConnection::sessionBus());
    ~TrayStatusItem() override;

    void show(const StatusItemContents &contents) override;
    void updateMenuItem(int index, const QString &title, bool hidden) override;

  private:
    void makeTrayIcon();
    void colorMenu();

    Appearance &appearance_;
    StatusArea statusArea_;
    StatusItemContents contents_;
    std::unique_ptr<TrayMenu> menu_;
    std::unique_ptr<QSystemTrayIcon> trayIcon_;
};

} // namespace quillmender
