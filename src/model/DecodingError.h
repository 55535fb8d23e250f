#pragma once

#include "model/DescribedError.h"

namespace quillmender {

/// Bytes that are not the JSON that they should be. The description quotes nothing of them.
class DecodingError : public DescribedError {
  public:
    explicit DecodingError(const QString &description) : DescribedError(description) {}
};

} // namespace quillmender
