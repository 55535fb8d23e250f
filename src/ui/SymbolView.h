#pragma once

#include "ui/Theme.h"

#include <QWidget>

namespace quillmender {

/// A symbol in the accent colour.
class SymbolView : public QWidget {
    Q_OBJECT

  public:
    /// `size` is that of its square side, in device-independent pixels.
    SymbolView(Theme &theme, int size, QWidget *parent = nullptr);

    const QString &symbol() const { return symbol_; }
    void setSymbol(const QString &name);

    /// From now on what is seen of the symbol, and not its square, begins at the left edge.
    void alignInk();

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    Theme &theme_;
    QString symbol_;
    bool isInkAligned_ = false;
};

} // namespace quillmender
