#include "ui/SymbolView.h"

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
    QPainter(this).drawPixmap(
        0, 0, theme_.symbol(symbol_, width(), devicePixelRatioF(), theme_.colors().accentMark));
}

} // namespace quillmender
