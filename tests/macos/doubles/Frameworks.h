#pragma once

#include <cstddef>

namespace quillmender::doubles {

/// Puts every Objective-C framework back to how a fresh system is.
void resetFrameworks();

/// How many observers of notifications and of values are registered anywhere.
std::size_t observerCount();

} // namespace quillmender::doubles
