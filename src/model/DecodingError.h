#pragma once

#include "model/UserVisibleError.h"

namespace quillmender {

/// Bytes that are not the JSON that they should be. The description quotes nothing of them.
class DecodingError : public UserVisibleError {
  public:
    explicit DecodingError(const QString &description) : UserVisibleError(description) {}
};

} // namespace quillmender
