#include "platform/linux/atspi/AtspiTypes.h"

#include <QDBusMetaType>

namespace quillmender::atspi {

bool ObjectRef::isNull() const {
    return service.isEmpty() || path.isEmpty() ||
           path == QStringLiteral("/org/a11y/atspi/accessible/null") ||
           path == QStringLiteral("/org/a11y/atspi/null");
}

StateSet::StateSet(const QList<uint> &words) {
    for (qsizetype index = 0; index < words.size() && index < 2; ++index)
        bits_ |= quint64(words[index]) << (32 * index);
}

bool StateSet::has(State state) const {
    return (bits_ >> int(state)) & 1U;
}

QDBusArgument &operator<<(QDBusArgument &argument, const ObjectRef &object) {
    argument.beginStructure();
    argument << object.service << QDBusObjectPath(object.path);
    argument.endStructure();
    return argument;
}

// NOLINTBEGIN(bugprone-return-const-ref-from-parameter): the signature that the bus library wants
const QDBusArgument &operator>>(const QDBusArgument &argument, ObjectRef &object) {
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> object.service >> path;
    argument.endStructure();
    object.path = path.path();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MatchRule &rule) {
    argument.beginStructure();
    argument << rule.states << rule.stateMatch << rule.attributes << rule.attributeMatch
             << rule.roles << rule.roleMatch << rule.interfaces << rule.interfaceMatch
             << rule.invert;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MatchRule &rule) {
    argument.beginStructure();
    argument >> rule.states >> rule.stateMatch >> rule.attributes >> rule.attributeMatch >>
        rule.roles >> rule.roleMatch >> rule.interfaces >> rule.interfaceMatch >> rule.invert;
    argument.endStructure();
    return argument;
}
// NOLINTEND(bugprone-return-const-ref-from-parameter)

void registerAtspiTypes() {
    static const bool once = [] {
        qDBusRegisterMetaType<ObjectRef>();
        qDBusRegisterMetaType<MatchRule>();
        qDBusRegisterMetaType<QList<int>>();
        qDBusRegisterMetaType<QMap<QString, QString>>();
        return true;
    }();
    Q_UNUSED(once)
}

} // namespace quillmender::atspi
