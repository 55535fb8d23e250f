#include "platform/linux/desktop/CoreFiles.h"

#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/resource.h>
#include <unistd.h>

namespace quillmender {

namespace {

constexpr auto filterFile = "/proc/self/coredump_filter";

struct Inherited {
    rlim_t limit = 0;
    // As text in the base that the kernel reads by its prefix.
    char filter[16] = "";
};

std::optional<Inherited> inherited;

void writeFilter(const char *text, size_t length) noexcept {
    const int file = ::open(filterFile, O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return;
    [[maybe_unused]] const ssize_t written = ::write(file, text, length);
    ::close(file);
}

void readFilter(char *text, size_t size) {
    const int file = ::open(filterFile, O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return;
    // It is told in hexadecimal digits without their prefix.
    text[0] = '0';
    text[1] = 'x';
    const ssize_t length = ::read(file, text + 2, size - 3);
    text[length > 0 ? length + 2 : 0] = '\0';
    ::close(file);
}

void setSoftLimit(rlim_t soft) noexcept {
    rlimit limit{};
    if (::getrlimit(RLIMIT_CORE, &limit) != 0)
        return;
    limit.rlim_cur = soft;
    ::setrlimit(RLIMIT_CORE, &limit);
}

} // namespace

void forbidCoreFiles() {
    if (!inherited) {
        inherited.emplace();
        rlimit limit{};
        if (::getrlimit(RLIMIT_CORE, &limit) == 0)
            inherited->limit = limit.rlim_cur;
        readFilter(inherited->filter, sizeof inherited->filter);
    }
    setSoftLimit(0);
    writeFilter("0", 1);
}

void restoreCoreFiles() noexcept {
    if (!inherited)
        return;
    setSoftLimit(inherited->limit);
    size_t length = 0;
    while (inherited->filter[length] != '\0')
        ++length;
    if (length > 0)
        writeFilter(inherited->filter, length);
}

} // namespace quillmender
