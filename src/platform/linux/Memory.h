#pragma once

#include <cstddef>

namespace quillmender {

/// Has the system provide the memory of a range now, all at once, rather than page by page when
/// each is first written to. Contents stay as they are. Does nothing where the system cannot.
void populateMemory(void *begin, std::size_t bytes);

} // namespace quillmender
