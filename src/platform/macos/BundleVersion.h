#pragma once

#include <QString>

#include <optional>

namespace quillmender {

/// The main bundle's "CFBundleShortVersionString"; absent when there is none or it is no text.
std::optional<QString> bundleVersion();

} // namespace quillmender
