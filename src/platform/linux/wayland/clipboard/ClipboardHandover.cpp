#include "platform/linux/wayland/clipboard/ClipboardHandover.h"

#include "platform/SignalWait.h"
#include "platform/linux/wayland/clipboard/ContentsFile.h"
#include "platform/linux/wayland/clipboard/ServingProcess.h"

#include <QDeadlineTimer>
#include <QLoggingCategory>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>

namespace quillmender::wayland {

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)

/// Above the numbers that the child finds them under.
Descriptor movedUp(const Descriptor &from) {
    constexpr int above = 10;
    return Descriptor(::fcntl(from.get(), F_DUPFD_CLOEXEC, above));
}

class SpawnSettings {
  public:
    SpawnSettings() {
        ::posix_spawn_file_actions_init(&files_);
        ::posix_spawnattr_init(&attributes_);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&files_, standard, "/dev/null", O_RDWR, 0);
        sigset_t ignored;
        ::sigemptyset(&ignored);
        ::sigaddset(&ignored, SIGPIPE);
        ::posix_spawnattr_setsigdefault(&attributes_, &ignored);
        ::posix_spawnattr_setflags(&attributes_,
                                   POSIX_SPAWN_SETSIGDEF | static_cast<short>(POSIX_SPAWN_SETSID));
    }
    SpawnSettings(const SpawnSettings &) = delete;
    SpawnSettings &operator=(const SpawnSettings &) = delete;
    ~SpawnSettings() {
        ::posix_spawn_file_actions_destroy(&files_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    void inherit(const Descriptor &file, int as) {
        ::posix_spawn_file_actions_adddup2(&files_, file.get(), as);
    }

    bool spawn() {
        // The program as it runs, even when a newer one has been installed meanwhile.
        constexpr auto thisProgram = "/proc/self/exe";
        std::string argument(serving::argument);
        const std::array<char *, 3> arguments{program_invocation_short_name, argument.data(),
                                              nullptr};
        pid_t process = 0;
        return ::posix_spawn(&process, thisProgram, &files_, &attributes_, arguments.data(),
                             environ) == 0;
    }

  private:
    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

/// The conversation with the process; closed when it could not be started.
Descriptor startServing(const OfferedContents &contents) {
    const Descriptor file = movedUp(writeContentsFile(contents));
    std::array<int, 2> ends{-1, -1};
    if (!file.isOpen() ||
        ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) != 0)
        return Descriptor();
    Descriptor ours(ends[0]);
    const Descriptor theirs = movedUp(Descriptor(ends[1]));
    SpawnSettings settings;
    settings.inherit(file, serving::contentsFile);
    settings.inherit(theirs, serving::starter);
    if (!settings.spawn())
        ours.close();
    return ours;
}

/// What the process says next; 0 when it has gone, or says nothing before the deadline.
QCoro::Task<char> nextWord(const Descriptor &conversation, QDeadlineTimer deadline) {
    QSocketNotifier readable(conversation.get(), QSocketNotifier::Read);
    while (!deadline.hasExpired()) {
        char word = 0;
        const ssize_t count = ::recv(conversation.get(), &word, 1, MSG_DONTWAIT);
        if (count == 1)
            co_return word;
        if (count == 0 || errno != EAGAIN)
            break;
        const std::chrono::milliseconds rest(deadline.remainingTime());
        co_await SignalWait(&readable, &QSocketNotifier::activated, std::max(rest, 1ms));
    }
    co_return '\0';
}

} // namespace

QCoro::Task<> handOverClipboard(OfferedContents contents, std::function<bool()> stillOurs) {
    const QDeadlineTimer deadline(2s);
    const Descriptor conversation = startServing(contents);
    if (!conversation.isOpen()) {
        qCWarning(log, "nothing could be left behind to serve the clipboard");
        co_return;
    }
    const char first = co_await nextWord(conversation, deadline);
    if (first != serving::ready)
        co_return;
    const char answer = stillOurs() ? serving::take : serving::leave;
    if (::send(conversation.get(), &answer, 1, MSG_NOSIGNAL) != 1)
        co_return;
    const char last = co_await nextWord(conversation, deadline);
    if (last != serving::serving)
        qCInfo(log, "the clipboard was not taken over");
}

} // namespace quillmender::wayland
