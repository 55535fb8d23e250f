#include "ui/SymbolView.h"

#include "ui/style/Look.h"

#include <QPainter>

namespace quillmender {

namespace {

/// How many columns at the left edge have nothing in them that the eye would notice.
int blankColumns(const QImage &image) {
    constexpr int noticed = 64;
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y)
            if (qAlpha(image.pixel(x, y)) >= noticed)
                return x;
    return 0;
}

} // namespace

SymbolView::SymbolView(Theme &theme, int size, QWidget *parent) : QWidget(parent), theme_(theme) {
    setFixedSize(size, size);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void SymbolView::setSymbol(const QString &name) {
    if (name == symbol_)
        return;
    symbol_ = name;
    update();
}

void SymbolView::alignInk() {
    isInkAligned_ = true;
    update();
}

void SymbolView::paintEvent(QPaintEvent *) {
    const QColor color = lookOf(Part::symbol, State::rest, theme_.colors()).symbol;
    const QPixmap drawing = theme_.symbol(symbol_, width(), devicePixelRatioF(), color);
    QPainter painter(this);
    if (isInkAligned_ && !drawing.isNull())
        painter.translate(-blankColumns(drawing.toImage()) / drawing.devicePixelRatio(), 0);
    painter.drawPixmap(0, 0, drawing);
}

} // namespace quillmender
