#include "doubles/cf/Object.h"

#include "doubles/LiveObjects.h"

namespace quillmender::doubles {

Object::Object(const char *kind, CFTypeID typeId, Lifetime lifetime)
    : kind_(kind),
      typeId_(typeId),
      lifetime_(lifetime) {
    if (lifetime_ == Lifetime::counted)
        LiveObjects::shared().gained(kind_);
}

void Object::retain() const {
    ++references_;
    LiveObjects::shared().gained(kind_);
}

void Object::release() const {
    LiveObjects::shared().gaveBack(kind_);
    --references_;
    if (references_ == 0 && lifetime_ == Lifetime::counted)
        delete this;
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

const CFAllocatorRef kCFAllocatorDefault = nullptr;

CFTypeID CFGetTypeID(CFTypeRef cf) {
    const auto *object = checked<Object>(cf, "CFGetTypeID");
    return object ? object->typeId() : 0;
}

CFTypeRef CFRetain(CFTypeRef cf) {
    if (const auto *object = checked<Object>(cf, "CFRetain"))
        object->retain();
    return cf;
}

void CFRelease(CFTypeRef cf) {
    if (const auto *object = checked<Object>(cf, "CFRelease"))
        object->release();
}

Boolean CFEqual(CFTypeRef cf1, CFTypeRef cf2) {
    const auto *left = checked<Object>(cf1, "CFEqual");
    const auto *right = checked<Object>(cf2, "CFEqual");
    return left && right && left->equals(*right);
}

CFHashCode CFHash(CFTypeRef cf) {
    const auto *object = checked<Object>(cf, "CFHash");
    return object ? object->hash() : 0;
}
