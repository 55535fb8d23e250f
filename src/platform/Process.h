#pragma once

#include <optional>

namespace quillmender {

/// Readies the process itself. To be called first in `main`, before any thread, library or file:
/// - a crash leaves no core file, which could hold an API key. The system still lets other programs
///   see which program this is;
/// - what the environment has that counts as unset by its own rules is unset;
/// - the toolkit, which reads the environment when its application object is made, does not take
///   the front at the launch, and speaks to the session's own window system.
void prepareProcess();

/// Where this process was started by the program itself, to do one thing for it: does it, and
/// answers what `main` is to return. Absent in every other process. To be called before the toolkit
/// looks for a display.
std::optional<int> runErrand(int argc, char *argv[]);

} // namespace quillmender
