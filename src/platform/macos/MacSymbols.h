#pragma once

#include "platform/Symbols.h"

namespace quillmender {

/// The system's symbols, each in the middle of its square, as large as fits.
class MacSymbols : public Symbols {
  public:
    QImage image(const QString &name, int pixelSize, const QColor &color) override;
};

} // namespace quillmender
