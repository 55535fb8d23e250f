#include "desktop/harness/wayland/KWinCompositor.h"

#include "desktop/harness/DesktopEntry.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/ProductProcess.h"
#include "desktop/harness/SessionBus.h"

#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace quillmender::harness {

namespace {

void writeFile(const QString &path, const QByteArray &contents) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        throw HarnessError(QStringLiteral("cannot write %1").arg(path));
}

// It is on top and nobody sees it, and the keyboard stays KWin's.
constexpr auto pulseRules = "floating_minimum_size 1 x 1\n"
                            "no_focus [app_id=\"screen-pulse\"]\n"
                            "for_window [app_id=\"screen-pulse\"] floating enable, "
                            "move absolute position 0 0";

QString copyWithoutCapabilities(const DesktopFolders &folders) {
    // The packaged one has a capability, with which the loader keeps variables from it, and which
    // not everybody may give.
    const QString copy = folders.home() + QStringLiteral("/bin/kwin_wayland");
    QDir().mkpath(QFileInfo(copy).path());
    if (!QFile::copy(QStandardPaths::findExecutable(QStringLiteral("kwin_wayland")), copy))
        throw HarnessError(QStringLiteral("cannot copy kwin_wayland"));
    return copy;
}

} // namespace

KWinCompositor::KWinCompositor(const Options &options, const Place &place)
    : Compositor(place, (QSizeF(options.screen) / options.scale).toSize(), QStringLiteral("kwin")),
      host_({.screen = options.screen,
             .layouts = options.layouts,
             .configuration = QString::fromLatin1(pulseRules)},
            place, QStringLiteral("kwin-host")) {
    writeSettings(options);
    // KWin looks for changes every now and then only.
    installDesktopEntry(place.folders, ProductProcess::path(),
                        QStringLiteral(QUILLMENDER_DESKTOP_FILE));
    setVariable("XDG_CURRENT_DESKTOP", QStringLiteral("KDE"));
    readDesktopFiles();
    QMap<QString, QString> own{
        {QStringLiteral("KWIN_COMPOSE"), QStringLiteral("Q")},
        // With a cursor of its own it stops painting in another compositor's window.
        {QStringLiteral("KWIN_FORCE_SW_CURSOR"), QStringLiteral("1")},
        // It would ask for the portal before the portal can reach it.
        {QStringLiteral("QT_NO_XDG_DESKTOP_PORTAL"), QStringLiteral("1")},
        {QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1")}};
    own.insert(variables());
    QProcessEnvironment environment = environmentWith(own);
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    QStringList arguments{QStringLiteral("--wayland-display"),
                          host_.variables().value(QStringLiteral("WAYLAND_DISPLAY")),
                          QStringLiteral("--socket"),
                          QStringLiteral("wayland-kwin"),
                          QStringLiteral("--width"),
                          QString::number(options.screen.width()),
                          QStringLiteral("--height"),
                          QString::number(options.screen.height()),
                          QStringLiteral("--scale"),
                          QString::number(options.scale),
                          QStringLiteral("--no-lockscreen")};
    if (options.xwayland)
        arguments.append(QStringLiteral("--xwayland"));
    process_ =
        std::make_unique<ChildProcess>(Command{.program = copyWithoutCapabilities(place.folders),
                                               .arguments = arguments + QStringList{announcement()},
                                               .environment = environment,
                                               .logFile = place.folders.log(QStringLiteral("kwin")),
                                               .input = {},
                                               .pipeOutput = false,
                                               .workingDirectory = place.folders.home()});
    waitForAnnouncement(*process_);
    // Its clients have these too. It would take them for the sign of a theme that is not there.
    setVariable("KDE_FULL_SESSION", QStringLiteral("true"));
    setVariable("KDE_SESSION_VERSION", QStringLiteral("6"));
    place.sessionBus.waitForOwner(QStringLiteral("org.kde.KWin"));
    scripting_ =
        std::make_unique<KWinScripting>(place.sessionBus.connection(), place.folders.runtime());
    windows_ = std::make_unique<KWinWindows>(*scripting_);
    waitUntil([&] { return host_.windows().active() != 0; },
              QStringLiteral("KWin has the keyboard"));
    keepScreenAwake();
}

KWinCompositor::~KWinCompositor() {
    // Its host's end would look like a crash to it.
    process_.reset();
}

// KWin hands on a client's frame without any damage too, and paints no other one before it has been
// told when that was on the screen. The host has nothing to paint then and tells nothing: clients
// that wait for their next frame would stand still until something else moves.
void KWinCompositor::keepScreenAwake() {
    QMap<QString, QString> variables = host_.variables();
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("wayland"));
    pulse_ = std::make_unique<ChildProcess>(
        Command{.program = QStringLiteral(QUILLMENDER_SCREEN_PULSE),
                .arguments = {},
                .environment = environmentWith(variables),
                .logFile = place().folders.log(QStringLiteral("screen-pulse")),
                .input = {},
                .pipeOutput = false,
                .workingDirectory = place().folders.home()});
    waitUntil([&] { return host_.windows().all().size() == 2; },
              QStringLiteral("the pulse of the screen"));
}

void KWinCompositor::writeSettings(const Options &options) {
    // KWin takes keys from the keyboard, and what they mean from here.
    writeFile(place().folders.config() + QStringLiteral("/kxkbrc"),
              QStringLiteral("[Layout]\nUse=true\nModel=pc105\nLayoutList=%1\n")
                  .arg(options.layouts)
                  .toUtf8());
    writeFile(place().folders.config() + QStringLiteral("/kwinrc"), options.configuration.toUtf8());
    // Programs are found by it; the desktop's own is a package of many others.
    writeFile(place().folders.config() + QStringLiteral("/menus/applications.menu"),
              "<!DOCTYPE Menu PUBLIC \"-//freedesktop//DTD Menu 1.0//EN\"\n"
              " \"http://www.freedesktop.org/standards/menu-spec/1.0/menu.dtd\">\n"
              "<Menu><Name>Applications</Name><DefaultAppDirs/><Include><All/></Include></Menu>\n");
}

void KWinCompositor::readDesktopFiles() {
    QProcess reader;
    reader.setProcessEnvironment(environmentWith(variables()));
    reader.setStandardErrorFile(place().folders.log(QStringLiteral("kbuildsycoca6")),
                                QIODevice::Append);
    reader.start(QStringLiteral("kbuildsycoca6"), QStringList());
    if (!reader.waitForFinished(static_cast<int>(defaultDeadline.count())))
        throw HarnessError(QStringLiteral("kbuildsycoca6: %1").arg(reader.errorString()));
}

void KWinCompositor::useLayout(quint32 layout) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.kde.keyboard"), QStringLiteral("/Layouts"),
        QStringLiteral("org.kde.KeyboardLayouts"), QStringLiteral("setLayout"));
    call << layout;
    const QDBusMessage answer = place().sessionBus.connection().call(call);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw HarnessError(QStringLiteral("no other layout: %1").arg(answer.errorMessage()));
    user().useLayout(layout);
}

void KWinCompositor::reload() {
    place().sessionBus.connection().call(QDBusMessage::createMethodCall(
        QStringLiteral("org.kde.KWin"), QStringLiteral("/KWin"), QStringLiteral("org.kde.KWin"),
        QStringLiteral("reconfigure")));
}

void KWinCompositor::trust(const QString &program, const QString &desktopFile) {
    if (installDesktopEntry(place().folders, program, desktopFile))
        readDesktopFiles();
}

} // namespace quillmender::harness
