#include "desktop/wayland/clipboard/SwayServer.h"

#include "desktop/x11/WaitFor.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <gtest/gtest.h>

#include <csignal>
#include <pwd.h>
#include <unistd.h>

namespace quillmender::wayland {

namespace {

constexpr auto configuration = "xwayland disable\n"
                               "output * resolution 1024x768\n";

QString socketIn(const QTemporaryDir &folder) {
    const QDir entries(folder.path());
    const QStringList found = entries.entryList({QStringLiteral("wayland-?")}, QDir::System);
    return found.isEmpty() ? QString() : entries.filePath(found.constFirst());
}

} // namespace

bool SwayServer::isInstalled() {
    return !QStandardPaths::findExecutable(QStringLiteral("sway")).isEmpty();
}

SwayServer::SwayServer() {
    QFile file(folder_.filePath(QStringLiteral("config")));
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration) < 0)
        ADD_FAILURE() << "no configuration for sway";
    file.close();
    // It refuses to run as root.
    QStringList command{QStringLiteral("--pdeathsig"), QStringLiteral("KILL")};
    const passwd *const nobody = ::getpwnam("nobody");
    if (::geteuid() == 0 && nobody) {
        const QByteArray folder = folder_.path().toLocal8Bit();
        EXPECT_EQ(::chown(folder.constData(), nobody->pw_uid, nobody->pw_gid), 0);
        EXPECT_TRUE(file.setPermissions(file.permissions() | QFile::ReadOther));
        command +=
            {QStringLiteral("--reuid=%1").arg(nobody->pw_uid),
             QStringLiteral("--regid=%1").arg(nobody->pw_gid), QStringLiteral("--clear-groups")};
    }
    command += {QStringLiteral("sway"), QStringLiteral("-c"), file.fileName()};

    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), folder_.path());
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder_.path());
    environment.insert(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    environment.insert(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    environment.insert(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.remove(QStringLiteral("DISPLAY"));
    process_.setProcessEnvironment(environment);
    process_.setStandardOutputFile(QProcess::nullDevice());
    process_.setStandardErrorFile(folder_.filePath(QStringLiteral("log")));
    process_.start(QStringLiteral("setpriv"), command);
    const bool isThere =
        x11::waitFor([this] { return !socketIn(folder_).isEmpty() || !isRunning(); });
    display_ = socketIn(folder_).toLocal8Bit();
    if (isThere && isRunning() && !display_.isEmpty())
        return;
    QFile log(folder_.filePath(QStringLiteral("log")));
    const bool isReadable = log.open(QIODevice::ReadOnly);
    ADD_FAILURE() << "sway does not start: "
                  << (isReadable ? log.readAll().toStdString() : std::string());
}

SwayServer::~SwayServer() {
    if (!isRunning())
        return;
    process_.terminate();
    if (!process_.waitForFinished(5000))
        kill();
}

void SwayServer::kill() {
    process_.kill();
    process_.waitForFinished(5000);
}

void SwayServer::stop() {
    EXPECT_EQ(::kill(static_cast<pid_t>(process_.processId()), SIGSTOP), 0);
}

void SwayServer::letGoOn() {
    EXPECT_EQ(::kill(static_cast<pid_t>(process_.processId()), SIGCONT), 0);
}

} // namespace quillmender::wayland
