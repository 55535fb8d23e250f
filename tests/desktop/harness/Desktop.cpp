#include "desktop/harness/Desktop.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Screenshot.h"

#include <QDir>
#include <QFileInfo>

namespace quillmender::harness {

namespace {

constexpr int dotsPerInchAtScaleOne = 96;

// So that pictures show where a window ends.
void paintBackground(XcbConnection &connection) {
    constexpr quint32 slate = 0x5c6b7a;
    xcb_change_window_attributes(connection.get(), connection.root(), XCB_CW_BACK_PIXEL, &slate);
    xcb_clear_area(connection.get(), 0, connection.root(), 0, 0, 0, 0);
    connection.roundTrip();
}

} // namespace

Desktop::Desktop() : Desktop(Options{}) {}

Desktop::Desktop(const Options &options) : environment_(folders_.environment()) {
    const int dotsPerInch = qRound(dotsPerInchAtScaleOne * options.scale);
    xServer_ = std::make_unique<XServer>(
        XServer::Options{.size = options.screen, .dotsPerInch = dotsPerInch}, environment_,
        folders_.log(QStringLiteral("x-server")));
    environment_.insert(QStringLiteral("DISPLAY"), xServer_->display());
    if (!qFuzzyCompare(options.scale, 1))
        environment_.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(options.scale));
    connection_ = std::make_unique<XcbConnection>(display());
    paintBackground(*connection_);
    windows_ = std::make_unique<Windows>(*connection_);
    input_ = std::make_unique<InputDriver>(*connection_);
    sessionBus_ =
        std::make_unique<SessionBus>(folders_.runtime(), environment_,
                                     folders_.log(QStringLiteral("session-bus")), options.services);
    environment_.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), sessionBus_->address());
    if (options.windowManager) {
        windowManager_ = std::make_unique<WindowManager>(
            *connection_, environment_, folders_.log(QStringLiteral("window-manager")),
            options.windowManagerCommand);
    }
    if (options.accessibilityBus) {
        accessibilityBus_ = std::make_unique<AccessibilityBus>(
            *sessionBus_, options.accessibilityEnabled, environment_,
            folders_.log(QStringLiteral("accessibility-bus")));
        // Qt takes the address from here without asking whether accessibility is on.
        if (!options.accessibilityEnabled) {
            xcb_delete_property(connection_->get(), connection_->root(),
                                connection_->atom("AT_SPI_BUS"));
            connection_->roundTrip();
        }
        accessible_ = std::make_unique<AccessibleClient>(*accessibilityBus_);
    }
    if (options.keyring) {
        keyring_ = std::make_unique<Keyring>(*sessionBus_, environment_,
                                             folders_.log(QStringLiteral("keyring")));
    }
}

Desktop::~Desktop() = default;

AccessibleClient &Desktop::accessible() {
    if (!accessible_)
        throw HarnessError(QStringLiteral("this desktop has no accessibility bus"));
    return *accessible_;
}

void Desktop::adoptEnvironment() const {
    for (const QString &name : environment_.keys())
        qputenv(name.toLatin1().constData(), environment_.value(name).toUtf8());
}

Command Desktop::command(const QString &program, const QStringList &arguments) const {
    return {.program = program,
            .arguments = arguments,
            .environment = environment_,
            .logFile = folders_.log(QFileInfo(program).fileName()),
            .input = {},
            .pipeOutput = false,
            .workingDirectory = folders_.home()};
}

QImage Desktop::screenshot() {
    return takeScreenshot(*connection_);
}

void Desktop::keepArtifacts(const QString &folder) {
    QDir().mkpath(folder);
    screenshot().save(folder + QStringLiteral("/screen.png"));
    const QDir logs(folders_.logs());
    for (const QString &name : logs.entryList(QDir::Files)) {
        const QString target = folder + QLatin1Char('/') + name;
        QFile::remove(target);
        QFile::copy(logs.filePath(name), target);
    }
}

} // namespace quillmender::harness
