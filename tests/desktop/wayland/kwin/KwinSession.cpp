#include "desktop/wayland/kwin/KwinSession.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace quillmender {

using namespace std::chrono_literals;

namespace {

const QString socketName = QStringLiteral("wayland-kwin");

QString programNamed(const char *name) {
    return QStandardPaths::findExecutable(QLatin1String(name));
}

} // namespace

QStringList KwinSession::missingPrograms() {
    QStringList missing;
    for (const char *name : {"dbus-daemon", "kwin_wayland", "kbuildsycoca6"})
        if (programNamed(name).isEmpty())
            missing.append(QLatin1String(name));
    return missing;
}

KwinSession::KwinSession() {
    setEnvironment();
    startBus();
    permitThisProgram();
    startKwin();
}

KwinSession::~KwinSession() {
    kwin_.reset();
    bus_.reset();
}

void KwinSession::setEnvironment() {
    const QDir folder(folder_.path());
    for (const char *name : {"home", "config/menus", "data/applications", "cache", "run"})
        folder.mkpath(QLatin1String(name));
    QFile(folder.filePath(QStringLiteral("run")))
        .setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const auto set = [&folder](const char *variable, const char *name) {
        qputenv(variable, folder.filePath(QLatin1String(name)).toUtf8());
    };
    set("HOME", "home");
    set("XDG_CONFIG_HOME", "config");
    set("XDG_DATA_HOME", "data");
    set("XDG_CACHE_HOME", "cache");
    set("XDG_RUNTIME_DIR", "run");
    qputenv("XDG_CURRENT_DESKTOP", "KDE");
    qputenv("XDG_MENU_PREFIX", "plasma-");
    qputenv("LC_ALL", "C.UTF-8");
    // KWin asks for the portal before it serves anybody, and the portal waits for KWin.
    qputenv("QT_NO_XDG_DESKTOP_PORTAL", "1");
    qputenv("QT_FORCE_STDERR_LOGGING", "1");
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        qunsetenv(variable);
}

void KwinSession::start(std::unique_ptr<harness::ChildProcess> &process, const QString &program,
                        const QStringList &arguments, bool pipeOutput) {
    harness::Command command;
    command.program = program;
    command.arguments = arguments;
    command.environment = QProcessEnvironment::systemEnvironment();
    command.logFile =
        folder_.filePath(program.section(QLatin1Char('/'), -1) + QLatin1String(".log"));
    command.pipeOutput = pipeOutput;
    process = std::make_unique<harness::ChildProcess>(command);
}

void KwinSession::startBus() {
    start(bus_, programNamed("dbus-daemon"),
          {QStringLiteral("--session"), QStringLiteral("--nofork"),
           QStringLiteral("--print-address=1")},
          true);
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus_->readLine(harness::defaultDeadline).trimmed());
}

// KWin looks for an entry whose program is the one that has connected, among those of the menu.
void KwinSession::permitThisProgram() {
    write(QStringLiteral("config/menus/plasma-applications.menu"),
          "<Menu><Name>Applications</Name><DefaultAppDirs/><Include><All/></Include></Menu>\n");
    write(QStringLiteral("data/applications/com.quillmender.Quillmender.desktop"),
          "[Desktop Entry]\nType=Application\nName=Quillmender\nExec=" +
              QFile::symLinkTarget(QStringLiteral("/proc/self/exe")).toUtf8() +
              "\nX-KDE-Wayland-Interfaces=" QUILLMENDER_KWIN_INTERFACES "\n");
    QProcess::execute(programNamed("kbuildsycoca6"), {});
}

void KwinSession::write(const QString &name, const QByteArray &contents) const {
    QFile file(folder_.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        throw harness::HarnessError(QStringLiteral("cannot write ") + name);
}

void KwinSession::startKwin() {
    // The installed one has file capabilities, with which it does not start everywhere.
    const QString program = folder_.filePath(QStringLiteral("kwin_wayland"));
    QFile::copy(programNamed("kwin_wayland"), program);
    qputenv("KWIN_COMPOSE", "Q");
    start(kwin_, program,
          {QStringLiteral("--virtual"), QStringLiteral("--width"), QStringLiteral("1280"),
           QStringLiteral("--height"), QStringLiteral("800"), QStringLiteral("--no-lockscreen"),
           QStringLiteral("--socket"), socketName},
          false);
    const QString socket = folder_.filePath(QStringLiteral("run/") + socketName);
    const auto isReady = [&] {
        if (!kwin_->isRunning())
            throw harness::HarnessError(QStringLiteral("KWin ended: ") +
                                        QString::fromUtf8(kwin_->log()));
        const auto *names = QDBusConnection::sessionBus().interface();
        return QFile::exists(socket) && names &&
               names->isServiceRegistered(QStringLiteral("org.kde.kglobalaccel"));
    };
    harness::waitUntil(isReady, QStringLiteral("KWin has started"), 60s);
    qputenv("WAYLAND_DISPLAY", socketName.toUtf8());
    qputenv("QT_QPA_PLATFORM", "wayland");
}

} // namespace quillmender
