#include "desktop/harness/Keyring.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/SessionBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QProcess>

namespace quillmender::harness {

namespace {

constexpr int toolDeadlineMs = 20000;
constexpr char masterPassword[] = "test";

/// The Secret type of the service's interface.
struct SessionSecret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

QDBusArgument &operator<<(QDBusArgument &argument, const SessionSecret &secret) {
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

// NOLINTBEGIN(bugprone-return-const-ref-from-parameter): the signature that the bus library wants
const QDBusArgument &operator>>(const QDBusArgument &argument, SessionSecret &secret) {
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    return argument;
}
// NOLINTEND(bugprone-return-const-ref-from-parameter)

QList<QVariant> ask(const QDBusConnection &bus, const QString &interface, const QString &method,
                    const QList<QVariant> &arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.secrets"),
                                                       QStringLiteral("/org/freedesktop/secrets"),
                                                       interface, method);
    call.setArguments(arguments);
    const QDBusMessage answer = bus.call(call, QDBus::Block, toolDeadlineMs);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw HarnessError(QStringLiteral("%1: %2").arg(method, answer.errorMessage()));
    return answer.arguments();
}

QList<QVariant> askService(const QDBusConnection &bus, const QString &method,
                           const QList<QVariant> &arguments) {
    return ask(bus, QStringLiteral("org.freedesktop.Secret.Service"), method, arguments);
}

QDBusObjectPath defaultCollection(const QDBusConnection &bus) {
    return askService(bus, QStringLiteral("ReadAlias"), {QStringLiteral("default")})
        .value(0)
        .value<QDBusObjectPath>();
}

struct ToolResult {
    int exitCode = -1;
    QByteArray output;
    QByteArray error;
};

ToolResult secretTool(const QProcessEnvironment &environment, const QStringList &arguments,
                      const QByteArray &input = {}) {
    QProcess tool;
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral("secret-tool"), arguments);
    tool.write(input);
    tool.closeWriteChannel();
    if (!tool.waitForFinished(toolDeadlineMs))
        throw HarnessError(QStringLiteral("secret-tool: %1").arg(tool.errorString()));
    return {tool.exitCode(), tool.readAllStandardOutput(), tool.readAllStandardError()};
}

QStringList attributes(const QString &service, const QString &account) {
    return {QStringLiteral("service"), service, QStringLiteral("account"), account};
}

} // namespace

Keyring::Keyring(SessionBus &session, const QProcessEnvironment &environment,
                 const QString &logFile)
    : bus_(session.connection()),
      environment_(environment),
      process_({.program = QStringLiteral("gnome-keyring-daemon"),
                .arguments = {QStringLiteral("--foreground"), QStringLiteral("--unlock"),
                              QStringLiteral("--components=secrets")},
                .environment = environment,
                .logFile = logFile,
                .input = masterPassword,
                .pipeOutput = false,
                .workingDirectory = {}}) {
    session.waitForOwner(QStringLiteral("org.freedesktop.secrets"));
    const QString probe = QStringLiteral("quillmender-harness-probe");
    store(probe, probe, "works");
    if (lookup(probe, probe) != "works")
        throw HarnessError(QStringLiteral("the keyring does not keep secrets"));
    clear(probe, probe);
}

void Keyring::store(const QString &service, const QString &account, const QByteArray &secret) {
    const QStringList arguments{QStringLiteral("store"), QStringLiteral("--label=") + service};
    const ToolResult result =
        secretTool(environment_, arguments + attributes(service, account), secret);
    if (result.exitCode != 0)
        throw HarnessError(
            QStringLiteral("cannot store a secret: %1").arg(QString::fromUtf8(result.error)));
}

QByteArray Keyring::lookup(const QString &service, const QString &account) const {
    return secretTool(environment_,
                      QStringList{QStringLiteral("lookup")} + attributes(service, account))
        .output;
}

void Keyring::lock() {
    const QList<QDBusObjectPath> all{defaultCollection(bus_)};
    askService(bus_, QStringLiteral("Lock"), {QVariant::fromValue(all)});
}

void Keyring::unlock() {
    qDBusRegisterMetaType<SessionSecret>();
    const QVariant nothing = QVariant::fromValue(QDBusVariant(QString()));
    const QList<QVariant> session =
        askService(bus_, QStringLiteral("OpenSession"), {QStringLiteral("plain"), nothing});
    const SessionSecret secret{session.value(1).value<QDBusObjectPath>(),
                               {},
                               masterPassword,
                               QStringLiteral("text/plain")};
    ask(bus_, QStringLiteral("org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"),
        QStringLiteral("UnlockWithMasterPassword"),
        {QVariant::fromValue(defaultCollection(bus_)), QVariant::fromValue(secret)});
}

void Keyring::clear(const QString &service, const QString &account) {
    secretTool(environment_, QStringList{QStringLiteral("clear")} + attributes(service, account));
}

} // namespace quillmender::harness
