#pragma once

#include <cstdio>
#include <cstdlib>

namespace quillmender::fuzz {

/// Ends the program when a promise is broken; the fuzzer then keeps the input.
inline void require(bool holds, const char *promise) {
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

} // namespace quillmender::fuzz
