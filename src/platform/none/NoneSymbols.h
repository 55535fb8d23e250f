#pragma once

#include "platform/Symbols.h"

namespace quillmender {

/// A system without symbols.
class NoneSymbols : public Symbols {
  public:
    QImage image(const QString &, int, const QColor &) override { return {}; }
};

} // namespace quillmender
