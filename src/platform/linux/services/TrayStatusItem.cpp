#include "platform/linux/services/TrayStatusItem.h"

#include "platform/linux/services/Badge.h"
#include "platform/linux/services/TrayMenu.h"

#include <QAction>
#include <QCursor>
#include <QPalette>
#include <QSystemTrayIcon>

namespace quillmender {

TrayStatusItem::TrayStatusItem(Appearance &appearance, WindowSystemTray *tray,
                               const QDBusConnection &sessionBus)
    : appearance_(appearance),
      placesMenu_(tray != nullptr),
      statusArea_(sessionBus, tray) {
    connect(&statusArea_, &StatusArea::appeared, this, &TrayStatusItem::makeTrayIcon);
}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::show(const StatusItemContents &contents) {
    const bool first = !menu_;
    trayIcon_.reset();
    contents_ = contents;
    menu_ = std::make_unique<TrayMenu>(contents.menu);
    connect(menu_.get(), &QMenu::aboutToShow, this, &TrayStatusItem::colorMenu);
    if (first)
        statusArea_.watch();
    else
        makeTrayIcon();
}

void TrayStatusItem::makeTrayIcon() {
    // An icon that is there registers again by itself when the status area restarts.
    if (trayIcon_)
        return;
    trayIcon_ = std::make_unique<QSystemTrayIcon>(badge(contents_.symbol));
    trayIcon_->setToolTip(contents_.toolTip);
    trayIcon_->setContextMenu(menu_.get());
    connect(trayIcon_.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    activate();
            });
    trayIcon_->show();
}

void TrayStatusItem::activate() {
    if (placesMenu_)
        menu_->popup(QCursor::pos());
    else if (QAction *const first = menu_->actions().value(0))
        first->trigger();
}

// The windows' colours come with the first window; the menu can be opened before.
void TrayStatusItem::colorMenu() {
    constexpr QRgb darkSurface = 0x2c2c30;
    const bool isDark = appearance_.colors().scheme == ColorScheme::dark;
    menu_->setPalette(isDark ? QPalette(QColor::fromRgb(darkSurface)) : QPalette());
}

void TrayStatusItem::updateMenuItem(int index, const QString &title, bool hidden) {
    if (menu_)
        menu_->update(index, title, hidden);
}

} // namespace quillmender
