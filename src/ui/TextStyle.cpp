#include "ui/TextStyle.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace quillmender {

double textScale() {
    constexpr int usual = 13;
    return std::max(usual, QFontInfo(QGuiApplication::font()).pixelSize()) / double(usual);
}

int grown(int pixels) {
    return int(std::lround(pixels * textScale()));
}

int symbolForText() {
    constexpr int usual = 20;
    return std::max(usual, QFontMetrics(fontFor(TextStyle::body)).height());
}

QFont fontFor(TextStyle style) {
    QFont font = QGuiApplication::font();
    switch (style) {
    case TextStyle::largeTitle:
        font.setPixelSize(30);
        font.setWeight(QFont::DemiBold);
        break;
    case TextStyle::title:
        font.setPixelSize(26);
        font.setWeight(QFont::DemiBold);
        break;
    case TextStyle::headline:
        font.setPixelSize(grown(14));
        font.setWeight(QFont::DemiBold);
        break;
    case TextStyle::body:
        font.setPixelSize(grown(13));
        break;
    case TextStyle::subheadline:
        font.setPixelSize(grown(12));
        break;
    case TextStyle::caption:
        font.setPixelSize(grown(11));
        break;
    }
    return font;
}

} // namespace quillmender
