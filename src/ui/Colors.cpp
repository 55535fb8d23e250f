#include "ui/Colors.h"

#include "platform/Appearance.h"

#include <algorithm>
#include <cmath>

namespace quillmender {

namespace {

constexpr double markContrast = 4.5;

double linear(float channel) {
    const double value = channel;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

QColor mixed(const QColor &a, const QColor &b, double share) {
    const auto channel = [share](int from, int to) {
        return int(std::lround(from + (to - from) * share));
    };
    return QColor(channel(a.red(), b.red()), channel(a.green(), b.green()),
                  channel(a.blue(), b.blue()));
}

QColor visibleOn(const QColor &accent, const QColor &ground, const QColor &towards) {
    constexpr int steps = 20;
    for (int step = 0; step < steps; ++step) {
        const QColor candidate = mixed(accent, towards, double(step) / steps);
        if (contrast(candidate, ground) >= markContrast)
            return candidate;
    }
    return towards;
}

} // namespace

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(color.alphaF() * float(opacity));
    return color;
}

double contrast(const QColor &a, const QColor &b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

Colors Colors::make(bool dark, std::optional<QColor> accent) {
    Colors colors;
    if (dark) {
        colors.window = QColor(0x1d, 0x1d, 0x21);
        colors.card = QColor(0x28, 0x28, 0x2d);
        colors.cardOutline = QColor(255, 255, 255, 18);
        colors.textBackground = QColor(0x19, 0x19, 0x1c);
        colors.text = QColor(0xf3, 0xf3, 0xf6);
        colors.secondary = QColor(0xa6, 0xa6, 0xb0);
        colors.error = QColor(0xff, 0x7b, 0x72);
        colors.success = QColor(0x5c, 0xcb, 0x7c);
        colors.control = QColor(0x36, 0x36, 0x3c);
        colors.controlOutline = QColor(255, 255, 255, 28);
    } else {
        colors.window = QColor(0xf3, 0xf3, 0xf6);
        colors.card = QColor(0xfc, 0xfc, 0xfd);
        colors.cardOutline = QColor(0, 0, 0, 18);
        colors.textBackground = QColor(0xff, 0xff, 0xff);
        colors.text = QColor(0x1c, 0x1c, 0x21);
        colors.secondary = QColor(0x65, 0x65, 0x70);
        colors.error = QColor(0xc4, 0x1c, 0x25);
        colors.success = QColor(0x17, 0x70, 0x31);
        colors.control = QColor(0xff, 0xff, 0xff);
        colors.controlOutline = QColor(0, 0, 0, 36);
    }
    colors.accent = accent.value_or(QColor::fromRgb(houseAccent));
    colors.accentMark = visibleOn(colors.accent, dark ? colors.card : colors.window,
                                  dark ? QColor(Qt::white) : QColor(Qt::black));
    const QColor ink(0x16, 0x16, 0x1a);
    const QColor paper(Qt::white);
    colors.onAccent = contrast(paper, colors.accent) >= 4.5 ||
                              contrast(paper, colors.accent) > contrast(ink, colors.accent)
                          ? paper
                          : ink;
    return colors;
}

} // namespace quillmender
