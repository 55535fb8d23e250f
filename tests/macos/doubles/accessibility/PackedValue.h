#pragma once

#include "doubles/cf/Object.h"

#include <ApplicationServices/ApplicationServices.h>

namespace quillmender::doubles {

/// Behind AXValueRef. Holds a range whatever type it claims to be: no other is unpacked here.
class PackedValue : public Object {
  public:
    PackedValue(AXValueType type, CFRange range);

    AXValueType type() const { return type_; }
    CFRange range() const { return range_; }
    std::string description() const override;

  private:
    AXValueType type_;
    CFRange range_;
};

/// A range of a test, as the system would hand it out; the caller owns the reference.
AXValueRef makeRange(CFIndex location, CFIndex length, AXValueType type = kAXValueTypeCFRange);

} // namespace quillmender::doubles
