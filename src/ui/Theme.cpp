#include "ui/Theme.h"

#include <QApplication>
#include <QImage>
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

Theme::Theme(Presence &presence)
    : presence_(presence),
      desktopIsDark_(QGuiApplication::palette().color(QPalette::Window).lightness() < 128) {
    presence_.onAppearanceChange([this] { follow(); });
    follow();
}

Theme::~Theme() {
    presence_.onAppearanceChange({});
}

QPixmap Theme::symbol(const QString &name, int size, double devicePixelRatio, const QColor &color) {
    const int pixels = int(std::lround(size * devicePixelRatio));
    const QString key =
        QStringLiteral("%1/%2/%3").arg(name).arg(pixels).arg(color.rgba(), 8, 16, QChar(u'0'));
    const auto known = symbols_.constFind(key);
    if (known != symbols_.constEnd())
        return *known;
    QPixmap pixmap;
    const QByteArray pixelData = presence_.symbolImage(name, pixels, color.rgba());
    if (pixelData.size() == qsizetype(pixels) * pixels * 4) {
        const QImage image(reinterpret_cast<const uchar *>(pixelData.constData()), pixels, pixels,
                           qsizetype{pixels} * 4, QImage::Format_ARGB32_Premultiplied);
        pixmap = QPixmap::fromImage(image.copy());
        pixmap.setDevicePixelRatio(devicePixelRatio);
    }
    symbols_.insert(key, pixmap);
    return pixmap;
}

void Theme::follow() {
    const Appearance appearance = presence_.appearance();
    const bool dark = appearance.colorScheme == ColorScheme::noPreference
                          ? desktopIsDark_
                          : appearance.colorScheme == ColorScheme::dark;
    colors_ = Colors::make(dark, appearance.accentColor);
    symbols_.clear();
    QApplication::setPalette(paletteOf(colors_));
    Q_EMIT changed();
}

} // namespace quillmender
