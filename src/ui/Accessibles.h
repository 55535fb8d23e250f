#pragma once

namespace quillmender {

/// Teaches the accessibility bridge the roles of our own widgets. May be called more than once.
void installAccessibles();

} // namespace quillmender
