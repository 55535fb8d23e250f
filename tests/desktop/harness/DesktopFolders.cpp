#include "desktop/harness/DesktopFolders.h"

#include "desktop/harness/CrashGuard.h"
#include "desktop/harness/HarnessError.h"

#include <QDir>
#include <QProcessEnvironment>

namespace quillmender::harness {

DesktopFolders::DesktopFolders() : root_(QDir::tempPath() + QStringLiteral("/desktop-XXXXXX")) {
    if (!root_.isValid())
        throw HarnessError(QStringLiteral("no temporary folder: %1").arg(root_.errorString()));
    CrashGuard::instance().watchFolder(root_.path());
    for (const QString &folder : {home(), config(), data(), runtime(), logs()})
        QDir().mkpath(folder);
    QFile::setPermissions(runtime(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString DesktopFolders::log(const QString &name) const {
    return logs() + QLatin1Char('/') + name + QStringLiteral(".log");
}

QProcessEnvironment DesktopFolders::environment() const {
    const QProcessEnvironment caller = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment environment;
    for (const QString &name :
         {QStringLiteral("PATH"), QStringLiteral("TMPDIR"), QStringLiteral("USER"),
          QStringLiteral("LOGNAME"), QStringLiteral("ASAN_OPTIONS"), QStringLiteral("LSAN_OPTIONS"),
          QStringLiteral("UBSAN_OPTIONS")}) {
        if (caller.contains(name))
            environment.insert(name, caller.value(name));
    }
    const auto set = [&](const char *name, const QString &value) {
        environment.insert(QString::fromLatin1(name), value);
    };
    set("HOME", home());
    set("XDG_CONFIG_HOME", config());
    set("XDG_DATA_HOME", data());
    set("XDG_CACHE_HOME", home() + QStringLiteral("/.cache"));
    set("XDG_STATE_HOME", home() + QStringLiteral("/.local/state"));
    set("XDG_RUNTIME_DIR", runtime());
    set("XDG_CONFIG_DIRS", QStringLiteral("/etc/xdg"));
    set("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"));
    set("XDG_SESSION_TYPE", QStringLiteral("x11"));
    set("LANG", QStringLiteral("C.UTF-8"));
    set("LC_ALL", QStringLiteral("C.UTF-8"));
    // Settings work without a service of the session's, and are as private as the home folder.
    set("GSETTINGS_BACKEND", QStringLiteral("keyfile"));
    set("GIO_USE_VFS", QStringLiteral("local"));
    set("GDK_BACKEND", QStringLiteral("x11"));
    set("GSK_RENDERER", QStringLiteral("cairo"));
    set("QT_QPA_PLATFORM", QStringLiteral("xcb"));
    set("LIBGL_ALWAYS_SOFTWARE", QStringLiteral("1"));
    return environment;
}

} // namespace quillmender::harness
