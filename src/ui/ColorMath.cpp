#include "ui/ColorMath.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillmender {

namespace {

constexpr int steps = 50;

std::array<double, 256> linearChannels() {
    std::array<double, 256> table{};
    for (int channel = 0; channel < 256; ++channel) {
        const double value = channel / 255.0;
        table[size_t(channel)] =
            value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    }
    return table;
}

double luminance(const QColor &color) {
    static const std::array<double, 256> linear = linearChannels();
    return 0.2126 * linear[size_t(color.red())] + 0.7152 * linear[size_t(color.green())] +
           0.0722 * linear[size_t(color.blue())];
}

} // namespace

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(color.alphaF() * float(opacity));
    return color;
}

QColor mixed(const QColor &a, const QColor &b, double share) {
    const auto channel = [share](int from, int to) {
        return int(std::lround(from + (to - from) * share));
    };
    return QColor(channel(a.red(), b.red()), channel(a.green(), b.green()),
                  channel(a.blue(), b.blue()));
}

QColor composited(const QColor &over, const QColor &ground) {
    return mixed(ground, over, double(over.alphaF()));
}

double contrast(const QColor &a, const QColor &b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor visibleOn(const QColor &color, const QList<QColor> &grounds, double ratio,
                 const QColor &towards) {
    for (int step = 0; step < steps; ++step) {
        const QColor candidate = step == 0 ? color : mixed(color, towards, double(step) / steps);
        if (std::ranges::all_of(grounds, [&](const QColor &ground) {
                return contrast(candidate, ground) >= ratio;
            }))
            return candidate;
    }
    return towards;
}

QColor faded(const QColor &color, const QList<QColor> &grounds, double ratio) {
    return visibleOn(grounds.first(), grounds, ratio, color);
}

} // namespace quillmender
