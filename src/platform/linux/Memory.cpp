#include "platform/linux/Memory.h"

#include <bit>
#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

namespace quillmender {

void populateMemory(void *begin, std::size_t bytes) {
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto address = std::bit_cast<std::uintptr_t>(begin);
    const std::uintptr_t inPage = address % page;
    // Before Linux 5.14 it is refused, and the memory comes as it is written to.
    madvise(static_cast<std::byte *>(begin) - inPage, bytes + inPage, MADV_POPULATE_WRITE);
}

} // namespace quillmender
