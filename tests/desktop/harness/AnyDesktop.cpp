#include "desktop/harness/AnyDesktop.h"

#include "desktop/harness/HarnessError.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDir>
#include <QFileInfo>

namespace quillmender::harness {

AnyDesktop::AnyDesktop() : environment_(folders_.environment()) {}

AnyDesktop::~AnyDesktop() = default;

AccessibleClient &AnyDesktop::accessible() {
    if (!accessible_)
        throw HarnessError(QStringLiteral("this desktop has no accessibility bus"));
    return *accessible_;
}

void AnyDesktop::adoptEnvironment() const {
    for (const QString &name : environment_.keys())
        qputenv(name.toLatin1().constData(), environment_.value(name).toUtf8());
}

Command AnyDesktop::command(const QString &program, const QStringList &arguments) const {
    return {.program = program,
            .arguments = arguments,
            .environment = environment_,
            .logFile = folders_.log(QFileInfo(program).fileName()),
            .input = {},
            .pipeOutput = false,
            .workingDirectory = folders_.home()};
}

void AnyDesktop::keepArtifacts(const QString &folder) {
    QDir().mkpath(folder);
    screenshot().save(folder + QStringLiteral("/screen.png"));
    const QDir logs(folders_.logs());
    for (const QString &name : logs.entryList(QDir::Files)) {
        const QString target = folder + QLatin1Char('/') + name;
        QFile::remove(target);
        QFile::copy(logs.filePath(name), target);
    }
}

void AnyDesktop::setVariable(const char *name, const QString &value) {
    environment_.insert(QString::fromLatin1(name), value);
}

void AnyDesktop::startSessionBus(const QStringList &services) {
    sessionBus_ = std::make_unique<SessionBus>(
        folders_.runtime(), environment_, folders_.log(QStringLiteral("session-bus")), services);
    setVariable("DBUS_SESSION_BUS_ADDRESS", sessionBus_->address());
}

void AnyDesktop::startAccessibilityBus(bool enabled) {
    accessibilityBus_ = std::make_unique<AccessibilityBus>(
        *sessionBus_, enabled, environment_, folders_.log(QStringLiteral("accessibility-bus")));
    accessible_ = std::make_unique<AccessibleClient>(*accessibilityBus_);
}

void AnyDesktop::startKeyring() {
    keyring_ = std::make_unique<Keyring>(*sessionBus_, environment_,
                                         folders_.log(QStringLiteral("keyring")));
}

void AnyDesktop::tellServices() {
    qDBusRegisterMetaType<QMap<QString, QString>>();
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("UpdateActivationEnvironment"));
    QMap<QString, QString> variables;
    for (const QString &name : environment_.keys())
        variables.insert(name, environment_.value(name));
    call << QVariant::fromValue(variables);
    sessionBus_->connection().call(call);
}

void AnyDesktop::endServices() {
    keyring_.reset();
    accessible_.reset();
    accessibilityBus_.reset();
}

} // namespace quillmender::harness
