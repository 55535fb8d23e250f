#include "ui/TextStyle.h"

#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace quillmender {

QFont fontFor(TextStyle style) {
    QFont font = QGuiApplication::font();
    const int body = std::max(13, QFontInfo(font).pixelSize());
    const auto scaled = [body](int pixels) { return int(std::lround(body * pixels / 13.0)); };
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
        font.setPixelSize(scaled(14));
        font.setWeight(QFont::DemiBold);
        break;
    case TextStyle::body:
        font.setPixelSize(body);
        break;
    case TextStyle::subheadline:
        font.setPixelSize(scaled(12));
        break;
    case TextStyle::caption:
        font.setPixelSize(scaled(11));
        break;
    }
    return font;
}

} // namespace quillmender
