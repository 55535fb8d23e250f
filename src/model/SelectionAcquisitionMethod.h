#pragma once

namespace quillmender {

/// How the captured text was obtained.
enum class SelectionAcquisitionMethod {
    accessibility, ///< read from the focused element
    clipboard,     ///< copied by the application itself
};

} // namespace quillmender
