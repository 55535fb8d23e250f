#include "ui/Theme.h"

#include "ui/TextStyle.h"
#include "ui/style/Look.h"
#include "ui/style/Style.h"

#include <QApplication>
#include <QPalette>
#include <QToolTip>

#include <cmath>

namespace quillmender {

namespace {

QPalette paletteOf(const Colors &colors) {
    const Look field = lookOf(Part::field, State::rest, colors);
    const Look selection = lookOf(Part::selection, State::rest, colors);
    const Look toolTip = lookOf(Part::toolTip, State::rest, colors);
    QPalette palette;
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::Base, field.fill);
    palette.setColor(QPalette::AlternateBase, colors.card);
    palette.setColor(QPalette::Text, field.text);
    palette.setColor(QPalette::PlaceholderText, field.placeholder);
    palette.setColor(QPalette::Button, colors.control);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::BrightText, colors.error);
    palette.setColor(QPalette::ToolTipBase, toolTip.fill);
    palette.setColor(QPalette::ToolTipText, toolTip.text);
    palette.setColor(QPalette::Highlight, selection.fill);
    palette.setColor(QPalette::HighlightedText, selection.text);
    palette.setColor(QPalette::Link, colors.accentMark);
    const QColor weak = lookOf(Part::field, State::disabled, colors).text;
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, weak);
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
    colors_ = Colors::make(dark, desktop.accent, desktop.contrast);
    drawn_.clear();
    Style::installed().setColors(colors_);
    const QPalette palette = paletteOf(colors_);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    QToolTip::setFont(fontFor(TextStyle::caption));
    Q_EMIT changed();
}

} // namespace quillmender
