#pragma once

#include <cstring>

namespace quillmender::wayland {

/// What the process that serves the clipboard after the program's end is started with: its
/// argument, the open files that it inherits, and what the two tell each other over the second.
namespace serving {
inline constexpr auto argument = "--serve-clipboard";
inline constexpr int contentsFile = 3;
inline constexpr int starter = 4;

inline constexpr char ready = 'r';   ///< it could take the clipboard now
inline constexpr char take = 't';    ///< answers that the clipboard is still the starter's
inline constexpr char leave = 'l';   ///< answers that somebody else has copied meanwhile
inline constexpr char serving = 's'; ///< the clipboard is its own
} // namespace serving

/// Whether this process was started for nothing else.
inline bool isAskedToServe(int argc, char *argv[]) {
    return argc == 2 && std::strcmp(argv[1], serving::argument) == 0;
}

/// In a process that was started to serve the clipboard: does so until anybody copies something or
/// the compositor goes, and answers its exit status.
int serveClipboard(int argc, char *argv[]);

} // namespace quillmender::wayland
