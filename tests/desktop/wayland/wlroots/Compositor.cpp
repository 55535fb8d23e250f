#include "desktop/wayland/wlroots/Compositor.h"

#include "desktop/harness/Waiter.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <unistd.h>

namespace quillmender::wlroots {

namespace {

constexpr uint nobody = 65534;

/// The folders belong to whom the compositor is run by.
void handOver(const QString &path) {
    if (getuid() == 0 && chown(QFile::encodeName(path).constData(), nobody, nobody) != 0)
        qFatal("cannot give %s away", qPrintable(path));
}

} // namespace

QString Compositor::missing(const QStringList &programs) {
    QStringList missing;
    for (const QString &program : programs) {
        if (QStandardPaths::findExecutable(program).isEmpty())
            missing.append(program);
    }
    return missing.join(QStringLiteral(", "));
}

Compositor::Compositor(Kind kind, const QByteArray &configuration) : kind_(kind) {
    QFile::setPermissions(folder_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                              QFile::ExeGroup | QFile::ExeOther);
    for (const char *name : {"run", "home", "home/.config", "home/.config/labwc"}) {
        const QString path = folder_.filePath(QLatin1String(name));
        QDir().mkpath(path);
        handOver(path);
    }
    QFile::setPermissions(runtime(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    environment_.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    environment_.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    environment_.insert(QStringLiteral("HOME"), folder_.filePath(QStringLiteral("home")));
    environment_.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime());
    environment_.insert(QStringLiteral("GDK_BACKEND"), QStringLiteral("wayland"));
    environment_.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
    QProcessEnvironment own = environment_;
    own.insert(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    own.insert(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    own.insert(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));

    writeConfiguration(configuration);
    QStringList command;
    if (getuid() == 0)
        command = {QStringLiteral("setpriv"), QStringLiteral("--reuid=%1").arg(nobody),
                   QStringLiteral("--regid=%1").arg(nobody), QStringLiteral("--clear-groups")};
    if (kind_ == Kind::sway)
        command += {QStringLiteral("sway"), QStringLiteral("-c"), configurationFile()};
    else
        command += {QStringLiteral("labwc"), QStringLiteral("-d")};
    process_ = std::make_unique<harness::ChildProcess>(
        harness::Command{.program = command.takeFirst(),
                         .arguments = command,
                         .environment = own,
                         .logFile = folder_.filePath(QStringLiteral("compositor.log")),
                         .input = {},
                         .pipeOutput = false,
                         .workingDirectory = {}});
    harness::waitUntil(
        [this] { return !display().isEmpty() && (kind_ != Kind::sway || !swaySocket().isEmpty()); },
        QStringLiteral("the compositor has started"));
    environment_.insert(QStringLiteral("WAYLAND_DISPLAY"), QString::fromLocal8Bit(display()));
}

Compositor::~Compositor() {
    programs_.clear();
}

QString Compositor::configurationFile() const {
    return folder_.filePath(kind_ == Kind::sway ? QStringLiteral("sway.conf")
                                                : QStringLiteral("home/.config/labwc/rc.xml"));
}

void Compositor::writeConfiguration(const QByteArray &added) const {
    QFile file(configurationFile());
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(file.fileName()));
    if (kind_ == Kind::sway)
        file.write("xwayland disable\ndefault_border none\nfocus_follows_mouse no\n" + added);
    else
        file.write("<labwc_config>" + added + "</labwc_config>\n");
}

QByteArray Compositor::display() const {
    const QStringList found =
        QDir(runtime()).entryList({QStringLiteral("wayland-?")}, QDir::System);
    return found.isEmpty() ? QByteArray() : QFile::encodeName(runtime() + u'/' + found.first());
}

QString Compositor::swaySocket() const {
    const QStringList found =
        QDir(runtime()).entryList({QStringLiteral("sway-ipc.*.sock")}, QDir::System);
    return found.isEmpty() ? QString() : runtime() + u'/' + found.first();
}

harness::ChildProcess &Compositor::start(const QString &program, const QStringList &arguments) {
    programs_.push_back(std::make_unique<harness::ChildProcess>(
        harness::Command{.program = program,
                         .arguments = arguments,
                         .environment = environment_,
                         .logFile = folder_.filePath(QStringLiteral("programs.log")),
                         .input = {},
                         .pipeOutput = false,
                         .workingDirectory = folder_.path()}));
    return *programs_.back();
}

} // namespace quillmender::wlroots
