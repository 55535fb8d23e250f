#include "platform/Process.h"

#include <cstdlib>
#include <sys/resource.h>

namespace quillmender {

// No program is started from here, which would inherit either: the system opens links and settings
// itself.
void prepareProcess() {
    // Otherwise the toolkit brings the program to the front when it has been launched, and the user
    // types into nothing.
    ::setenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1", 1);

    rlimit limit{};
    if (::getrlimit(RLIMIT_CORE, &limit) != 0)
        return;
    limit.rlim_cur = 0;
    ::setrlimit(RLIMIT_CORE, &limit);
}

// The system itself keeps what the program leaves on the pasteboard.
std::optional<int> runErrand(int, char *[]) {
    return std::nullopt;
}

} // namespace quillmender
