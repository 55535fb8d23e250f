#include "desktop/harness/wayland/OrdinaryUser.h"

#include "desktop/harness/Artifacts.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmender::harness {

namespace {

constexpr auto ordinaryUser = "nobody";

// Where X servers for older programs have their sockets: compositors want it to be root's, and that
// nobody can take another's away.
void prepareSocketsOfX() {
    constexpr auto folder = "/tmp/.X11-unix";
    constexpr mode_t sticky = 01777;
    ::mkdir(folder, sticky);
    ::chmod(folder, sticky);
}

} // namespace

void becomeOrdinaryUser(char *arguments[]) {
    if (::geteuid() != 0)
        return;
    const passwd *user = ::getpwnam(ordinaryUser);
    if (user == nullptr) {
        std::fprintf(stderr, "there is no user %s to run a compositor as\n", ordinaryUser);
        std::exit(EXIT_FAILURE);
    }
    prepareSocketsOfX();
    const QString artifacts = artifactsFolder();
    QDir().mkpath(artifacts);
    const uid_t userId = user->pw_uid;
    const gid_t groupId = user->pw_gid;
    bool isDone = ::chown(QFile::encodeName(artifacts).constData(), userId, groupId) == 0;
    ::setenv("USER", ordinaryUser, 1);
    ::setenv("LOGNAME", ordinaryUser, 1);
    isDone = isDone && ::setgroups(0, nullptr) == 0 &&
             ::setresgid(groupId, groupId, groupId) == 0 &&
             ::setresuid(userId, userId, userId) == 0;
    // A process that has changed its user may not be looked into; a new one may.
    if (isDone)
        ::execv("/proc/self/exe", arguments);
    std::perror("cannot go on as an ordinary user");
    std::exit(EXIT_FAILURE);
}

} // namespace quillmender::harness
