#pragma once

namespace quillmender {

/// What the captured text covers.
enum class CaptureScope {
    selection, ///< only what the user had selected
    fullField, ///< the whole text field, because nothing usable was selected
};

} // namespace quillmender
