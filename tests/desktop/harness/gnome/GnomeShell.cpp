#include "desktop/harness/gnome/GnomeShell.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"
#include "desktop/harness/gnome/GnomeSettings.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace quillmender::harness {

namespace {

const auto displayName = QStringLiteral("wayland-gnome");

QString newFolder(const QString &path) {
    QDir().mkpath(path);
    return path;
}

QString listOfLayouts(const QString &layouts) {
    QStringList sources;
    for (const QString &layout : layouts.split(u','))
        sources.append(QStringLiteral("('xkb', '%1')").arg(layout));
    return QStringLiteral("[%1]").arg(sources.join(QStringLiteral(", ")));
}

} // namespace

QStringList GnomeShell::missingPrograms() {
    QStringList programs{QStringLiteral("gnome-shell"), QStringLiteral("gsettings"),
                         QStringLiteral("/usr/libexec/xdg-desktop-portal"),
                         QStringLiteral("/usr/libexec/xdg-desktop-portal-gnome"),
                         QStringLiteral("/usr/libexec/gnome-control-center-global-shortcuts-"
                                        "provider")};
    programs.removeIf([](const QString &program) {
        return program.startsWith(u'/') ? QFileInfo(program).isExecutable()
                                        : !QStandardPaths::findExecutable(program).isEmpty();
    });
    return programs;
}

QMap<QString, QString> GnomeShell::variablesBefore() {
    return {{QStringLiteral("WAYLAND_DISPLAY"), displayName},
            {QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("GNOME")},
            {QStringLiteral("XDG_SESSION_DESKTOP"), QStringLiteral("gnome")},
            {QStringLiteral("DESKTOP_SESSION"), QStringLiteral("gnome")}};
}

GnomeShell::GnomeShell(const Options &options, const Place &place)
    : place_(place),
      systemBus_(newFolder(place.folders.runtime() + QStringLiteral("/system")), place.environment,
                 place.folders.log(QStringLiteral("system-bus"))),
      screen_((QSizeF(options.screen) / options.scale).toSize()),
      eyes_(place.sessionBus.connection()),
      windows_(eyes_) {
    writeSettings(options);
    writeMonitors(options);
    QStringList arguments{
        QStringLiteral("--headless"),
        QStringLiteral("--wayland"),
        QStringLiteral("--virtual-monitor"),
        QStringLiteral("%1x%2").arg(options.screen.width()).arg(options.screen.height()),
        QStringLiteral("--wayland-display"),
        displayName};
    if (!options.xwayland)
        arguments.append(QStringLiteral("--no-x11"));
    process_ = std::make_unique<ChildProcess>(
        Command{.program = QStringLiteral("gnome-shell"),
                .arguments = arguments,
                .environment = environment(),
                .logFile = place.folders.log(QStringLiteral("gnome-shell")),
                .input = {},
                .pipeOutput = false,
                .workingDirectory = place.folders.home()});
    waitUntilUp();
    user_ = std::make_unique<GnomeUser>(place.sessionBus.connection(), screen_, options.layouts);
    setOverview(false);
}

QProcessEnvironment GnomeShell::environment() const {
    QProcessEnvironment environment = place_.environment;
    for (const char *ofClients : {"WAYLAND_DISPLAY", "GDK_BACKEND", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(ofClients));
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), systemBus_.address());
    environment.insert(QStringLiteral("LP_NUM_THREADS"), QStringLiteral("1"));
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(GNOME_WITHOUT_SYSTEMD));
    return environment;
}

void GnomeShell::writeSettings(const Options &options) const {
    const auto set = [this](const char *schema, const char *key, const QString &value) {
        setGnomeSetting(place_.environment, QLatin1String(schema), QLatin1String(key), value);
    };
    const QString no = QStringLiteral("false");
    const QString yes = QStringLiteral("true");
    set("org.gnome.desktop.interface", "toolkit-accessibility", options.accessibility ? yes : no);
    set("org.gnome.desktop.interface", "enable-animations", no);
    set("org.gnome.desktop.session", "idle-delay", QStringLiteral("0"));
    set("org.gnome.desktop.lockdown", "disable-lock-screen", yes);
    set("org.gnome.desktop.input-sources", "sources", listOfLayouts(options.layouts));
    set("org.gnome.shell", "welcome-dialog-last-shown-version", QStringLiteral("'999'"));
    set("org.gnome.shell", "enabled-extensions",
        QStringLiteral("['%1']").arg(ShellEyes::install(place_.folders)));
    if (options.scale != 1)
        set("org.gnome.mutter", "experimental-features",
            QStringLiteral("['scale-monitor-framebuffer']"));
}

void GnomeShell::writeMonitors(const Options &options) const {
    if (options.scale == 1)
        return;
    QFile file(place_.folders.config() + QStringLiteral("/monitors.xml"));
    if (!file.open(QIODevice::WriteOnly))
        throw HarnessError(QStringLiteral("cannot write %1").arg(file.fileName()));
    file.write(QStringLiteral("<monitors version=\"2\"><configuration>"
                              "<layoutmode>logical</layoutmode><logicalmonitor>"
                              "<x>0</x><y>0</y><scale>%3</scale><primary>yes</primary>"
                              "<monitor><monitorspec><connector>Meta-0</connector>"
                              "<vendor>MetaVendor</vendor><product>MetaVirtualMonitor</product>"
                              "<serial>0x00</serial></monitorspec>"
                              "<mode><width>%1</width><height>%2</height><rate>60.000</rate></mode>"
                              "</monitor></logicalmonitor></configuration></monitors>\n")
                   .arg(options.screen.width())
                   .arg(options.screen.height())
                   .arg(options.scale)
                   .toUtf8());
}

void GnomeShell::waitUntilUp() {
    // The whole desktop is in it; where the machine is busy it takes its time.
    constexpr std::chrono::minutes longStart{1};
    QJsonObject state;
    waitUntil(
        [&] {
            if (!process_->isRunning())
                throw HarnessError(QStringLiteral("GNOME Shell ended: %1")
                                       .arg(QString::fromUtf8(process_->log().right(2000))));
            if (!place_.sessionBus.hasOwner(RemoteControl::service()))
                return false;
            state = eyes_.state();
            return !state.isEmpty() && !state[QStringLiteral("starting")].toBool();
        },
        QStringLiteral("GNOME Shell is up"), longStart);
    const auto take = [&](const char *variable, const char *key) {
        const QString value = state[QLatin1String(key)].toString();
        if (!value.isEmpty())
            variables_.insert(QLatin1String(variable), value);
    };
    take("DISPLAY", "display");
    take("XAUTHORITY", "authority");
}

void GnomeShell::setOverview(bool isShown) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.gnome.Shell"), QStringLiteral("/org/gnome/Shell"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    call.setArguments({QStringLiteral("org.gnome.Shell"), QStringLiteral("OverviewActive"),
                       QVariant::fromValue(QDBusVariant(isShown))});
    // What is said while it still comes is forgotten.
    constexpr std::chrono::milliseconds aWhile{500};
    waitUntil(
        [&] {
            place_.sessionBus.connection().call(call);
            return becomesTrue([&] { return isOverviewShown() == isShown; }, aWhile);
        },
        QStringLiteral("the overview comes or goes"));
}

bool GnomeShell::isOverviewShown() const {
    return eyes_.state()[QStringLiteral("overview")].toBool();
}

QImage GnomeShell::screenshot() {
    // The shell takes pictures for owners of a few names alone.
    QDBusConnection bus = place_.sessionBus.connection();
    bus.registerService(QStringLiteral("org.gnome.Screenshot"));
    const QString file = place_.folders.runtime() + QStringLiteral("/screenshot.png");
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.gnome.Shell.Screenshot"), QStringLiteral("/org/gnome/Shell/Screenshot"),
        QStringLiteral("org.gnome.Shell.Screenshot"), QStringLiteral("Screenshot"));
    call.setArguments({false, false, file});
    const QDBusMessage answer = bus.call(call);
    return answer.arguments().value(0).toBool() ? QImage(file) : QImage();
}

} // namespace quillmender::harness
