#include "doubles/cf/Data.h"

#include "doubles/cf/TypeIds.h"

#include <utility>

namespace quillmender::doubles {

Data::Data(std::string bytes) : Object("CFData", dataTypeId), bytes_(std::move(bytes)) {}

bool Data::equals(const Object &other) const {
    const auto *data = dynamic_cast<const Data *>(&other);
    return data && data->bytes_ == bytes_;
}

CFDataRef makeData(const std::string &bytes) {
    return refOf<CFDataRef>(new Data(bytes));
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

CFTypeID CFDataGetTypeID() {
    return dataTypeId;
}

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8 *bytes, CFIndex length) {
    if (std::exchange(nextDataIsNull, false))
        return nullptr;
    return makeData(std::string(bytes, bytes + length));
}

CFIndex CFDataGetLength(CFDataRef theData) {
    const auto *data = checked<Data>(theData, "CFDataGetLength");
    return data ? static_cast<CFIndex>(data->bytes().size()) : 0;
}

const UInt8 *CFDataGetBytePtr(CFDataRef theData) {
    const auto *data = checked<Data>(theData, "CFDataGetBytePtr");
    return data ? reinterpret_cast<const UInt8 *>(data->bytes().data()) : nullptr;
}
