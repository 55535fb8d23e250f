#pragma once

#include <CoreFoundation/CoreFoundation.h>

namespace quillmender::doubles {

/// Numbers of this double's own; the real ones differ from run to run.
enum TypeId : CFTypeID {
    stringTypeId = 101,
    dataTypeId,
    booleanTypeId,
    numberTypeId,
    dictionaryTypeId,
    elementTypeId,
    axValueTypeId,
    eventSourceTypeId,
    eventTypeId,
};

} // namespace quillmender::doubles
