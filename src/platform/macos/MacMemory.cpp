#include "platform/Memory.h"

namespace quillmender {

// The system has no such advice.
void populateMemory(void *, std::size_t) {}

} // namespace quillmender
