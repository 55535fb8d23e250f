#include "TerminalProgram.h"

#include <QDeadlineTimer>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmender {

TerminalProgram::TerminalProgram(const QByteArray &folder, const QByteArrayList &command,
                                 const QByteArray &terminal) {
    std::array<char *, 16> arguments{};
    for (qsizetype i = 0; i < command.size(); ++i)
        arguments.at(std::size_t(i)) = const_cast<char *>(command[i].constData());
    struct winsize size{};
    size.ws_row = 24;
    size.ws_col = 80;
    process_ = ::forkpty(&screen_, nullptr, nullptr, &size);
    if (process_ == 0) {
        ::setenv("TERM", terminal.constData(), 1);
        ::setenv("HOME", folder.constData(), 1);
        ::setenv("PS1", "ready> ", 1);
        ::unsetenv("DISPLAY");
        ::unsetenv("ENV");
        if (::chdir(folder.constData()) == 0)
            ::execvp(arguments[0], arguments.data());
        ::_exit(127);
    }
    ::fcntl(screen_, F_SETFD, FD_CLOEXEC);
    ::fcntl(screen_, F_SETFL, O_NONBLOCK);
}

TerminalProgram::~TerminalProgram() {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
    ::close(screen_);
}

void TerminalProgram::type(const QByteArray &keys) {
    [[maybe_unused]] const ssize_t size =
        ::write(screen_, keys.constData(), std::size_t(keys.size()));
}

bool TerminalProgram::writes(const QByteArray &text) {
    const QDeadlineTimer deadline(20'000);
    while (!written_.contains(text)) {
        if (deadline.hasExpired())
            return false;
        drain();
    }
    return true;
}

void TerminalProgram::drain() {
    struct pollfd waiting{screen_, POLLIN, 0};
    ::poll(&waiting, 1, 20);
    std::array<char, 4096> some{};
    const ssize_t size = ::read(screen_, some.data(), some.size());
    if (size > 0)
        written_.append(some.data(), size);
}

} // namespace quillmender
