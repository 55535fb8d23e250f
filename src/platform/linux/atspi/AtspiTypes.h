#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace quillmender::atspi {

/// Where an accessible object lives: the unique name of its application's connection and its path.
struct ObjectRef {
    QString service;
    QString path;

    /// The protocol writes "no object" as the path ".../null".
    bool isNull() const;

    friend bool operator==(const ObjectRef &, const ObjectRef &) = default;
};

/// Values of the protocol's Role enumeration that matter here.
namespace roles {
inline constexpr uint unknown = 67;
inline constexpr uint filler = 20;
inline constexpr uint frame = 23;
inline constexpr uint panel = 39;
inline constexpr uint passwordText = 40;
inline constexpr uint scrollPane = 49;
inline constexpr uint terminal = 60;
inline constexpr uint viewport = 68;
inline constexpr uint window = 69;
} // namespace roles

/// Bit numbers of the protocol's StateType enumeration.
enum class State {
    active = 1,
    editable = 7,
    focused = 12,
    showing = 25,
    visible = 30,
    managesDescendants = 31,
    readOnly = 43,
};

/// The state set as it travels: two words of 32 bits, lower bits first.
class StateSet {
  public:
    StateSet() = default;
    explicit StateSet(const QList<uint> &words);

    bool has(State state) const;

  private:
    quint64 bits_ = 0;
};

/// The rule argument of Collection.GetMatches.
struct MatchRule {
    QList<int> states;
    int stateMatch = 0;
    QMap<QString, QString> attributes;
    int attributeMatch = 0;
    QList<int> roles;
    int roleMatch = 0;
    QStringList interfaces;
    int interfaceMatch = 0;
    bool invert = false;
};

namespace protocol {
inline constexpr auto accessible = "org.a11y.atspi.Accessible";
inline constexpr auto application = "org.a11y.atspi.Application";
inline constexpr auto collection = "org.a11y.atspi.Collection";
inline constexpr auto editableText = "org.a11y.atspi.EditableText";
inline constexpr auto text = "org.a11y.atspi.Text";
inline constexpr auto registry = "org.a11y.atspi.Registry";
inline constexpr auto rootPath = "/org/a11y/atspi/accessible/root";
inline constexpr auto deviceEventController = "org.a11y.atspi.DeviceEventController";
inline constexpr auto deviceEventControllerPath = "/org/a11y/atspi/registry/deviceeventcontroller";
} // namespace protocol

QDBusArgument &operator<<(QDBusArgument &argument, const ObjectRef &object);
const QDBusArgument &operator>>(const QDBusArgument &argument, ObjectRef &object);
QDBusArgument &operator<<(QDBusArgument &argument, const MatchRule &rule);
const QDBusArgument &operator>>(const QDBusArgument &argument, MatchRule &rule);

/// Makes the types above known to Qt's D-Bus marshaller. Once per process is enough.
void registerAtspiTypes();

} // namespace quillmender::atspi

Q_DECLARE_METATYPE(quillmender::atspi::ObjectRef)
Q_DECLARE_METATYPE(quillmender::atspi::MatchRule)
