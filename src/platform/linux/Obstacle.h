#pragma once

#include <QString>

#include <optional>

namespace quillmender {

/// Why a chord is not typed, in words for the log; absent when nothing speaks against it.
using Obstacle = std::optional<QString>;

} // namespace quillmender
