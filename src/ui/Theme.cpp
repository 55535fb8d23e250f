#include "ui/Theme.h"

#include <QApplication>
#include <QPalette>

#include <cmath>

namespace quillmender {

namespace {

QPalette paletteOf(const Colors &colors) {
    QPalette palette;
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::Base, colors.textBackground);
    palette.setColor(QPalette::AlternateBase, colors.card);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.secondary);
    palette.setColor(QPalette::Button, colors.control);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::BrightText, colors.error);
    palette.setColor(QPalette::ToolTipBase, colors.card);
    palette.setColor(QPalette::ToolTipText, colors.text);
    palette.setColor(QPalette::Highlight, colors.accent);
    palette.setColor(QPalette::HighlightedText, colors.onAccent);
    palette.setColor(QPalette::Link, colors.accentMark);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, withOpacity(colors.text, 0.4));
    return palette;
}

} // namespace

Theme::Theme(Appearance &appearance, Symbols &symbols)
    : appearance_(appearance),
      symbols_(symbols),
      desktopIsDark_(QGuiApplication::palette().color(QPalette::Window).lightness() < 128) {
    appearance_.onChange([this] { follow(); });
    follow();
}

Theme::~Theme() {
    appearance_.onChange({});
}

QPixmap Theme::symbol(const QString &name, int size, double devicePixelRatio, const QColor &color) {
    const int pixels = int(std::lround(size * devicePixelRatio));
    const QString key =
        QStringLiteral("%1/%2/%3").arg(name).arg(pixels).arg(color.rgba(), 8, 16, QChar(u'0'));
    const auto known = drawn_.constFind(key);
    if (known != drawn_.constEnd())
        return *known;
    QPixmap pixmap = QPixmap::fromImage(symbols_.image(name, pixels, color));
    if (!pixmap.isNull())
        pixmap.setDevicePixelRatio(devicePixelRatio);
    drawn_.insert(key, pixmap);
    return pixmap;
}

void Theme::follow() {
    const DesktopColors desktop = appearance_.colors();
    const bool dark = desktop.scheme == ColorScheme::noPreference
                          ? desktopIsDark_
                          : desktop.scheme == ColorScheme::dark;
    colors_ = Colors::make(dark, desktop.accent);
    drawn_.clear();
    QApplication::setPalette(paletteOf(colors_));
    Q_EMIT changed();
}

} // namespace quillmender
