#include "doubles/cf/Number.h"

#include "doubles/cf/TypeIds.h"

namespace quillmender::doubles {

Number::Number(long long value) : Object("CFNumber", numberTypeId), value_(value) {}

BooleanConstant::BooleanConstant(bool value)
    : Object("CFBoolean", booleanTypeId, Lifetime::constant),
      value_(value) {}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

const CFBooleanRef kCFBooleanTrue = refOf<CFBooleanRef>(new BooleanConstant(true));
const CFBooleanRef kCFBooleanFalse = refOf<CFBooleanRef>(new BooleanConstant(false));

CFTypeID CFBooleanGetTypeID() {
    return booleanTypeId;
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
    const auto *constant = checked<BooleanConstant>(boolean, "CFBooleanGetValue");
    return constant && constant->value();
}

CFTypeID CFNumberGetTypeID() {
    return numberTypeId;
}

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType theType, const void *valuePtr) {
    const long long value = theType == kCFNumberSInt32Type
                                ? *static_cast<const SInt32 *>(valuePtr)
                                : *static_cast<const long long *>(valuePtr);
    return refOf<CFNumberRef>(new Number(value));
}
