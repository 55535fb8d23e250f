#include "ui/SymbolView.h"

#include "ui/style/Look.h"

#include <QPainter>

namespace quillmender {

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

void SymbolView::paintEvent(QPaintEvent *) {
    const QColor color = lookOf(Part::symbol, State::rest, theme_.colors()).symbol;
    QPainter(this).drawPixmap(0, 0, theme_.symbol(symbol_, width(), devicePixelRatioF(), color));
}

} // namespace quillmender
