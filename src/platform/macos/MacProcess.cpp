#include "platform/Process.h"

#include <sys/resource.h>

namespace quillmender {

void prepareProcess() {
    // No program is started from here: the system opens links and settings itself.
    rlimit limit{};
    if (::getrlimit(RLIMIT_CORE, &limit) != 0)
        return;
    limit.rlim_cur = 0;
    ::setrlimit(RLIMIT_CORE, &limit);
}

} // namespace quillmender
