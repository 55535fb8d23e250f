#include "fuzz/Require.h"
#include "platform/linux/atspi/Decoding.h"
#include "platform/linux/atspi/PendingCall.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QEventLoop>

#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>

using namespace quillmender;
using namespace quillmender::atspi;
using fuzz::require;

/// As a set of relations has it.
struct Relation {
    uint kind = 0;
    QList<ObjectRef> targets;
};
Q_DECLARE_METATYPE(Relation)

static QDBusArgument &operator<<(QDBusArgument &argument, const Relation &relation) {
    argument.beginStructure();
    argument << relation.kind << relation.targets;
    argument.endStructure();
    return argument;
}

static const QDBusArgument &operator>>(const QDBusArgument &argument, Relation &relation) {
    argument.beginStructure();
    argument >> relation.kind >> relation.targets;
    argument.endStructure();
    return argument;
}

namespace {

constexpr qsizetype mostObjects = 5;
constexpr std::size_t mostItems = 8;
constexpr int deepest = 6;

template <typename Item, typename Take> QVariant listOf(FuzzedDataProvider &input, Take take) {
    QList<Item> list;
    for (std::size_t left = input.ConsumeIntegralInRange<std::size_t>(0, mostItems); left > 0;
         --left)
        list.append(take());
    return QVariant::fromValue(list);
}

QString takeText(FuzzedDataProvider &input) {
    return QString::fromUtf8(QByteArray::fromStdString(input.ConsumeRandomLengthString(20)));
}

ObjectRef takeObject(FuzzedDataProvider &input) {
    return {takeText(input), input.ConsumeBool() ? QStringLiteral("/field")
                                                 : QStringLiteral("/org/a11y/atspi/null")};
}

QVariant takeValue(FuzzedDataProvider &input, int depth);

/// A structure of whatever the bytes say.
QVariant takeStructure(FuzzedDataProvider &input, int depth) {
    QDBusArgument argument;
    argument.beginStructure();
    argument << input.ConsumeIntegral<uint>();
    for (std::size_t left = input.ConsumeIntegralInRange<std::size_t>(0, 3); left > 0; --left)
        argument.appendVariant(takeValue(input, depth + 1));
    argument.endStructure();
    return QVariant::fromValue(argument);
}

QVariant takeRelations(FuzzedDataProvider &input) {
    return listOf<Relation>(input, [&] {
        Relation relation{input.ConsumeIntegralInRange<uint>(8, 12), {}};
        for (std::size_t left = input.ConsumeIntegralInRange<std::size_t>(0, 3); left > 0; --left)
            relation.targets.append(takeObject(input));
        return relation;
    });
}

QVariant takeValue(FuzzedDataProvider &input, int depth) {
    if (depth > deepest)
        return true;
    switch (input.ConsumeIntegralInRange(0, 13)) {
    case 0:
        return QVariant::fromValue(takeObject(input));
    case 1:
        return listOf<ObjectRef>(input, [&] { return takeObject(input); });
    case 2:
        return listOf<uint>(input, [&] { return input.ConsumeIntegral<uint>(); });
    case 3:
        return listOf<qulonglong>(input, [&] { return input.ConsumeIntegral<qulonglong>(); });
    case 4:
        return listOf<int>(input, [&] { return input.ConsumeIntegral<int>(); });
    case 5:
        return QVariant::fromValue(QMap<QString, QString>{{takeText(input), takeText(input)}});
    case 6:
        return QVariantMap{{takeText(input), takeValue(input, depth + 1)}};
    case 7:
        return takeText(input);
    case 8:
        return input.ConsumeIntegral<int>();
    case 9:
        return input.ConsumeIntegral<qulonglong>();
    case 10:
        return QVariant::fromValue(QDBusVariant(takeValue(input, depth + 1)));
    case 11:
        return takeRelations(input);
    case 12:
        return QVariantList{takeValue(input, depth + 1)};
    default:
        return takeStructure(input, depth);
    }
}

/// Answers everything with one value.
class Partner : public QDBusVirtualObject {
  public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override {
        connection.send(message.createReply(answer));
        return true;
    }

    QVariant answer;
};

/// Two ends of one connection.
class Pair {
  public:
    Pair() {
        server_.setAnonymousAuthenticationAllowed(true);
        QEventLoop loop;
        QObject::connect(&server_, &QDBusServer::newConnection, &loop,
                         [&](const QDBusConnection &connection) {
                             other_ = connection;
                             other_.registerVirtualObject(QStringLiteral("/field"), &partner);
                             loop.quit();
                         });
        own_ = QDBusConnection::connectToPeer(server_.address(), QStringLiteral("own"));
        loop.exec();
    }

    std::optional<QVariantList> ask() {
        const QDBusMessage question = QDBusMessage::createMethodCall(
            {}, QStringLiteral("/field"), QStringLiteral("org.a11y.atspi.Accessible"),
            QStringLiteral("GetState"));
        const QDBusPendingCallWatcher watcher(own_.asyncCall(question));
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        if (!watcher.isFinished())
            loop.exec();
        if (watcher.isError())
            return std::nullopt;
        return watcher.reply().arguments();
    }

    Partner partner;

  private:
    QDBusServer server_;
    QDBusConnection own_{QString()};
    QDBusConnection other_{QString()};
};

} // namespace

// Answers of whatever type are taken apart without a crash, and never give more than was asked for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    static const QCoreApplication application(count, arguments);
    registerAtspiTypes();
    qDBusRegisterMetaType<QList<ObjectRef>>();
    qDBusRegisterMetaType<QList<qulonglong>>();
    qDBusRegisterMetaType<Relation>();
    qDBusRegisterMetaType<QList<Relation>>();
    static Pair pair;

    FuzzedDataProvider input(data, size);
    pair.partner.answer = takeValue(input, 0);
    const std::optional<QVariantList> answer = pair.ask();
    const QVariant value = firstValue(answer);
    require(decodeObjects(value, mostObjects).size() <= mostObjects, "no more than were asked for");
    decodeStates(value).has(State::readOnly);
    decodeRelation(value, 10).isNull();
    intValue(answer);
    return 0;
}
