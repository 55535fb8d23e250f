#include "doubles/accessibility/PackedValue.h"

#include "doubles/CallLog.h"
#include "doubles/accessibility/AccessibilityServer.h"
#include "doubles/cf/TypeIds.h"

namespace quillmender::doubles {

PackedValue::PackedValue(AXValueType type, CFRange range)
    : Object("AXValue", axValueTypeId),
      type_(type),
      range_(range) {}

std::string PackedValue::description() const {
    return std::to_string(range_.location) + "+" + std::to_string(range_.length) + " of type " +
           std::to_string(type_);
}

AXValueRef makeRange(CFIndex location, CFIndex length, AXValueType type) {
    return refOf<AXValueRef>(new PackedValue(type, CFRangeMake(location, length)));
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

CFTypeID AXValueGetTypeID() {
    return axValueTypeId;
}

AXValueRef AXValueCreate(AXValueType theType, const void *valuePtr) {
    if (!AccessibilityServer::current().createsValues) {
        CallLog::shared().add("AXValueCreate fails");
        return nullptr;
    }
    return refOf<AXValueRef>(new PackedValue(theType, *static_cast<const CFRange *>(valuePtr)));
}

AXValueType AXValueGetType(AXValueRef value) {
    const auto *packed = checked<PackedValue>(value, "AXValueGetType");
    return packed ? packed->type() : kAXValueTypeIllegal;
}

Boolean AXValueGetValue(AXValueRef value, AXValueType theType, void *valuePtr) {
    const auto *packed = checked<PackedValue>(value, "AXValueGetValue");
    if (!packed || packed->type() != theType || !AccessibilityServer::current().unpacksValues)
        return false;
    EXPECT_EQ(theType, kAXValueTypeCFRange) << "only ranges are unpacked";
    *static_cast<CFRange *>(valuePtr) = packed->range();
    return true;
}
