#pragma once

#include "ui/style/Look.h"

#include <QStyleOptionButton>

class QPainter;

namespace quillmender {

/// What the style has to know of a push button beyond what the toolkit tells.
struct PushButtonOption : QStyleOptionButton {
    enum StyleOptionVersion { Version = QStyleOptionButton::Version + 1 };
    PushButtonOption() : QStyleOptionButton(Version) {}

    Part part = Part::button;
};

/// Buttons with a caption.
namespace buttonStyle {

QSize sizeOf(const QStyleOptionButton &option);
/// The width that a caption has in a button of that width.
int captionWidth(int buttonWidth);
void draw(QPainter &painter, const QStyleOptionButton &option, const Colors &colors);

} // namespace buttonStyle

} // namespace quillmender
