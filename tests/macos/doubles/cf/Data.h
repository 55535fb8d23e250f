#pragma once

#include "doubles/cf/Object.h"

#include <string>

namespace quillmender::doubles {

/// Behind CFDataRef.
class Data : public Object {
  public:
    explicit Data(std::string bytes);

    const std::string &bytes() const { return bytes_; }

    bool equals(const Object &other) const override;
    std::string description() const override { return "<" + bytes_ + ">"; }

  private:
    std::string bytes_;
};

/// Bytes of a test, as the system would hand them out; the caller owns the reference.
CFDataRef makeData(const std::string &bytes);

/// Makes the next CFDataCreate answer null.
inline bool nextDataIsNull = false;

} // namespace quillmender::doubles
