#include "desktop/stalls/editor/Nonsense.h"

#include "desktop/stalls/editor/ObjectReference.h"

#include <QDBusVariant>
#include <QVariantMap>

namespace quillmender {

QDBusMessage nonsense(const QDBusMessage &call, int turn) {
    qDBusRegisterMetaType<QList<QList<int>>>();
    const ObjectReference object{QStringLiteral(":1.1"),
                                 QDBusObjectPath(QStringLiteral("/nowhere"))};
    const QVariantMap map{{QStringLiteral("key"), QStringLiteral("value")}};
    const QList<QVariant> values{
        QVariant::fromValue(QList<ObjectReference>{object}),
        QVariant::fromValue(object),
        map,
        QVariant::fromValue(QList<QList<int>>{{1, 2}, {3}}),
        QVariant::fromValue(QList<qulonglong>{1, 2}),
        QStringLiteral("nonsense"),
        QStringList{QStringLiteral("non"), QStringLiteral("sense")},
        -1,
        2147483647,
        2.5,
        QByteArray("\xff\x00\x01", 3),
        QVariant::fromValue(QDBusVariant(map)),
        QVariant::fromValue(QDBusVariant(QVariant::fromValue(object))),
    };
    const qsizetype empty = values.size();
    const qsizetype chosen = turn % (empty + 1);
    return chosen == empty ? call.createReply() : call.createReply(values[chosen]);
}

} // namespace quillmender
