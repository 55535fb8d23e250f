#pragma once

#include "platform/Symbols.h"
#include "platform/linux/services/SymbolDrawings.h"

namespace quillmender {

/// Our own drawings under the names of the symbols.
class DrawnSymbols : public Symbols {
  public:
    QImage image(const QString &name, int pixelSize, const QColor &color) override {
        return drawSymbol(name, pixelSize, color);
    }
};

} // namespace quillmender
