#pragma once

#include <optional>
#include <span>
#include <string>

namespace quillmender {

/// What the program writes to standard output instead of starting, when an argument asks for its
/// help or version. Nothing for every other argument: those are the toolkit's.
std::optional<std::string> commandLineAnswer(std::span<const char *const> arguments);

} // namespace quillmender
