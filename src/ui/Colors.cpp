#include "ui/Colors.h"

namespace quillmender {

namespace {

constexpr double textContrast = 4.5;
constexpr double lineContrast = 3;
constexpr double strongTextContrast = 7;
constexpr double fillContrast = 1.6;

const QColor paper(Qt::white);
const QColor ink(0x16, 0x16, 0x1a);

Colors darkColors() {
    Colors colors;
    colors.window = QColor(0x1d, 0x1d, 0x21);
    colors.card = QColor(0x28, 0x28, 0x2d);
    colors.cardOutline = QColor(255, 255, 255, 18);
    colors.lifted = QColor(0x30, 0x30, 0x36);
    colors.textBackground = QColor(0x19, 0x19, 0x1c);
    colors.text = QColor(0xf3, 0xf3, 0xf6);
    colors.secondary = QColor(0xa6, 0xa6, 0xb0);
    colors.error = QColor(0xff, 0x7b, 0x72);
    colors.success = QColor(0x5c, 0xcb, 0x7c);
    colors.control = QColor(0x36, 0x36, 0x3c);
    colors.controlOutline = QColor(255, 255, 255, 28);
    colors.fieldOutline = QColor(0x80, 0x80, 0x8a);
    colors.trackOff = QColor(0x78, 0x78, 0x82);
    colors.strongest = QColor(Qt::white);
    return colors;
}

Colors lightColors() {
    Colors colors;
    colors.window = QColor(0xf3, 0xf3, 0xf6);
    colors.card = QColor(0xfc, 0xfc, 0xfd);
    colors.cardOutline = QColor(0, 0, 0, 18);
    colors.lifted = QColor(0xff, 0xff, 0xff);
    colors.textBackground = QColor(0xff, 0xff, 0xff);
    colors.text = QColor(0x1c, 0x1c, 0x21);
    colors.secondary = QColor(0x65, 0x65, 0x70);
    colors.error = QColor(0xc4, 0x1c, 0x25);
    colors.success = QColor(0x17, 0x70, 0x31);
    colors.control = QColor(0xff, 0xff, 0xff);
    colors.controlOutline = QColor(0, 0, 0, 36);
    colors.fieldOutline = QColor(0x8a, 0x8a, 0x94);
    colors.trackOff = QColor(0x84, 0x84, 0x8e);
    colors.strongest = QColor(Qt::black);
    return colors;
}

QList<QColor> groundsOf(const Colors &colors) {
    return {colors.window, colors.card, colors.textBackground, colors.lifted};
}

void raiseContrast(Colors &colors) {
    const QList<QColor> grounds = groundsOf(colors);
    for (QColor *text : {&colors.secondary, &colors.error, &colors.success})
        *text = visibleOn(*text, grounds, strongTextContrast, colors.strongest);
    colors.fieldOutline =
        visibleOn(colors.fieldOutline, grounds, strongTextContrast, colors.strongest);
    colors.cardOutline = visibleOn(composited(colors.cardOutline, colors.card), grounds,
                                   lineContrast, colors.strongest);
    colors.controlOutline = colors.fieldOutline;
    colors.moreContrast = true;
}

/// White text wants the fill a little darker; only on a pale accent the text is dark.
void fillWithAccent(Colors &colors) {
    const QColor seen = visibleOn(colors.accent, groundsOf(colors), fillContrast, colors.strongest);
    const bool isDeep = contrast(paper, seen) >= lineContrast;
    colors.onAccent = isDeep ? paper : ink;
    colors.accentFill =
        isDeep ? visibleOn(seen, {colors.onAccent}, textContrast, QColor(Qt::black)) : seen;
}

/// The track is seen beside the card, and its light knob on it.
void switchWithAccent(Colors &colors) {
    colors.knob = paper;
    const QColor seen =
        visibleOn(colors.accent, {colors.window, colors.card}, lineContrast, colors.strongest);
    colors.trackOn = visibleOn(seen, {colors.knob}, lineContrast, QColor(Qt::black));
}

} // namespace

Colors Colors::make(bool dark, std::optional<QColor> accent, ContrastPreference preference) {
    Colors colors = dark ? darkColors() : lightColors();
    if (preference == ContrastPreference::higher)
        raiseContrast(colors);
    colors.accent = accent.value_or(QColor::fromRgb(houseAccent));
    colors.accentMark =
        visibleOn(colors.accent, {dark ? colors.card : colors.window},
                  colors.moreContrast ? strongTextContrast : textContrast, colors.strongest);
    fillWithAccent(colors);
    switchWithAccent(colors);
    return colors;
}

} // namespace quillmender
