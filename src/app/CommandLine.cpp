#include "app/CommandLine.h"

#include <string_view>

namespace quillmender {

std::optional<std::string> commandLineAnswer(std::span<const char *const> arguments) {
    for (const std::string_view argument : arguments) {
        if (argument == "-v" || argument == "--version")
            return "Quillmender " QUILLMENDER_VERSION "\n";
        if (argument == "-h" || argument == "--help")
            return "Usage: quillmender [--help | --version]\n"
                   "\n"
                   "Waits in the status area until Control + Alt + Space is pressed, then offers "
                   "to\n"
                   "rewrite the text that is selected. On Linux, a second start opens the "
                   "settings.\n"
                   "\n"
                   "  -h, --help     Tell how to call the program, and end\n"
                   "  -v, --version  Tell the version, and end\n";
    }
    return std::nullopt;
}

} // namespace quillmender
