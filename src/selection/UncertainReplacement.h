#pragma once

#include "model/AppFailure.h"

namespace quillmender {

/// The source application was told to change its text, and nobody knows whether it did or will.
/// Whatever else were tried could write the same text a second time, and the range of the session
/// may be another text by now: the session is over. The user reads `replacementFailed`.
class UncertainReplacement : public AppFailure {
  public:
    UncertainReplacement() : AppFailure(replacementFailed()) {}
};

} // namespace quillmender
