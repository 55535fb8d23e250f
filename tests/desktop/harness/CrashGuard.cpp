#include "desktop/harness/CrashGuard.h"

#include "desktop/harness/HarnessError.h"

#include <QString>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace quillmender::harness {

namespace {

// Ends when its input does, which is when every copy of the pipe's other end is closed.
constexpr auto script = R"(
trap '' INT TERM HUP
declare -A groups folders
while read -r verb object; do
    case $verb in
        +) groups[$object]=1 ;;
        -) unset "groups[$object]" ;;
        f) folders[$object]=1 ;;
    esac
done
for group in "${!groups[@]}"; do kill -KILL -- "-$group" 2>/dev/null; done
for folder in "${!folders[@]}"; do rm -rf -- "$folder"; done
)";

} // namespace

CrashGuard &CrashGuard::instance() {
    static CrashGuard guard;
    return guard;
}

CrashGuard::CrashGuard() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        throw HarnessError(QStringLiteral("no pipe for the crash guard"));
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        ::dup2(ends[0], STDIN_FILENO);
        // A test runner waits for the end of these two.
        const int nowhere = ::open("/dev/null", O_WRONLY);
        if (nowhere >= 0) {
            ::dup2(nowhere, STDOUT_FILENO);
            ::dup2(nowhere, STDERR_FILENO);
        }
        ::execlp("bash", "bash", "-c", script, nullptr);
        ::_exit(127);
    }
    ::close(ends[0]);
    pipe_ = ends[1];
}

CrashGuard::~CrashGuard() {
    ::close(pipe_);
}

void CrashGuard::watchGroup(qint64 processGroup) {
    tell('+', QString::number(processGroup));
}

void CrashGuard::forgetGroup(qint64 processGroup) {
    tell('-', QString::number(processGroup));
}

void CrashGuard::watchFolder(const QString &path) {
    tell('f', path);
}

void CrashGuard::tell(char verb, const QString &object) {
    const QByteArray line = QByteArray(1, verb) + ' ' + object.toUtf8() + '\n';
    [[maybe_unused]] const ssize_t written = ::write(pipe_, line.constData(), line.size());
}

} // namespace quillmender::harness
