#include "platform/linux/services/LinuxPresence.h"

#include "platform/linux/services/StatusMenu.h"
#include "platform/linux/services/Symbols.h"

#include <QApplication>
#include <QCursor>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QSystemTrayIcon>
#include <xcb/xcb.h>

#include <cstdlib>

namespace quillmender {

namespace {

constexpr quint32 badgeColor = 0x4a5bd4;

// A status area does not tell its background: a badge of our own is seen on any.
QIcon badge(const QString &symbol) {
    QIcon icon;
    for (const int size : {16, 18, 20, 22, 24, 28, 32, 48, 64}) {
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgb(badgeColor));
        painter.drawRoundedRect(image.rect(), size * 0.24, size * 0.24);
        const int spacing = qRound(size * 0.18);
        const int glyph = 4 * spacing;
        painter.drawImage((size - glyph) / 2, (size - glyph) / 2,
                          drawSharpSymbol(symbol, glyph, (spacing + 1) / 2, Qt::white));
        painter.end();
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

// The window system is spoken to on a connection of its own, which would otherwise get ahead of
// what the toolkit has asked for about the same window: its creation, its mapping.
void finishToolkitRequests() {
    const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return;
    xcb_connection_t *const xcb = x11->connection();
    std::free(xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
}

} // namespace

LinuxPresence::LinuxPresence(WindowSystem *windowSystem, const QDBusConnection &sessionBus)
    : windowSystem_(windowSystem),
      appearance_(sessionBus),
      statusArea_(sessionBus) {
    connect(&appearance_, &PortalAppearance::changed, this, [this] {
        if (listener_)
            listener_();
    });
    connect(&statusArea_, &StatusArea::appeared, this, &LinuxPresence::makeTrayIcon);
}

LinuxPresence::~LinuxPresence() = default;

void LinuxPresence::setAccessoryPolicy() {
    QApplication::setQuitOnLastWindowClosed(false);
}

void LinuxPresence::showStatusItem(const StatusItem &item) {
    const bool first = !menu_;
    trayIcon_.reset();
    item_ = item;
    menu_ = std::make_unique<StatusMenu>(item.menu);
    connect(menu_.get(), &QMenu::aboutToShow, this, &LinuxPresence::colorMenu);
    if (first)
        statusArea_.watch();
    else
        makeTrayIcon();
}

void LinuxPresence::makeTrayIcon() {
    // An icon that is there registers again by itself when the status area restarts.
    if (trayIcon_)
        return;
    trayIcon_ = std::make_unique<QSystemTrayIcon>(badge(item_.symbol));
    trayIcon_->setToolTip(item_.toolTip);
    trayIcon_->setContextMenu(menu_.get());
    connect(trayIcon_.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    menu_->popup(QCursor::pos());
            });
    trayIcon_->show();
}

// The windows' colours come with the first window; the menu can be opened before.
void LinuxPresence::colorMenu() {
    constexpr QRgb darkSurface = 0x2c2c30;
    const bool isDark = appearance_.current().colorScheme == ColorScheme::dark;
    menu_->setPalette(isDark ? QPalette(QColor::fromRgb(darkSurface)) : QPalette());
}

void LinuxPresence::updateStatusMenuItem(int index, const QString &title, bool hidden) {
    if (menu_)
        menu_->update(index, title, hidden);
}

// With the first window, so that a program that shows none pays for none.
void LinuxPresence::ensureWindowIcon() const {
    if (QGuiApplication::windowIcon().isNull())
        QGuiApplication::setWindowIcon(badge(item_.symbol));
}

void LinuxPresence::applyPanelAttributes(quintptr windowId) {
    ensureWindowIcon();
    if (!windowSystem_)
        return;
    finishToolkitRequests();
    windowSystem_->applyPanelAttributes(windowId);
}

void LinuxPresence::activateWindow(quintptr windowId) {
    ensureWindowIcon();
    if (!windowSystem_)
        return;
    finishToolkitRequests();
    windowSystem_->activateWindow(windowId);
}

QByteArray LinuxPresence::symbolImage(const QString &name, int pixelSize, quint32 color) {
    const QImage image = drawSymbol(name, pixelSize, QColor::fromRgba(color));
    return QByteArray(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
}

Appearance LinuxPresence::appearance() {
    return appearance_.current();
}

void LinuxPresence::onAppearanceChange(std::function<void()> listener) {
    listener_ = std::move(listener);
}

} // namespace quillmender
