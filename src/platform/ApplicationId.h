#pragma once

namespace quillmender {

/// The name by which the desktop knows the program: of its .desktop file and on the session bus.
inline constexpr auto applicationId = "com.quillmender.Quillmender";

} // namespace quillmender
