#include "desktop/harness/Accessible.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>

namespace quillmender::harness {

namespace {

constexpr int callDeadlineMs = 3000;
constexpr uint relativeToScreen = 0;

QString fullName(const char *interface) {
    return QStringLiteral("org.a11y.atspi.") + QLatin1String(interface);
}

bool isTrue(const QList<QVariant> &answer) {
    return !answer.isEmpty() && answer.first().toBool();
}

} // namespace

Accessible::Accessible(QDBusConnection bus, QString service, QString path)
    : bus_(std::move(bus)),
      service_(std::move(service)),
      path_(std::move(path)) {}

QString Accessible::name() const {
    return property("Accessible", "Name").toString();
}

QString Accessible::description() const {
    return property("Accessible", "Description").toString();
}

QString Accessible::roleName() const {
    return ask("Accessible", "GetRoleName").value(0).toString();
}

uint Accessible::role() const {
    return ask("Accessible", "GetRole").value(0).toUInt();
}

bool Accessible::hasState(AccessibleState state) const {
    const QList<QVariant> answer = ask("Accessible", "GetState");
    if (answer.isEmpty())
        return false;
    const auto words = qdbus_cast<QList<uint>>(answer.first());
    const auto bit = static_cast<uint>(state);
    return (words.value(bit / 32) >> (bit % 32) & 1U) != 0;
}

QStringList Accessible::interfaces() const {
    return ask("Accessible", "GetInterfaces").value(0).toStringList();
}

QList<Accessible> Accessible::children() const {
    QList<Accessible> result;
    const QList<QVariant> answer = ask("Accessible", "GetChildren");
    if (answer.isEmpty())
        return result;
    const auto list = answer.first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        result.append(Accessible(bus_, service, path.path()));
    }
    list.endArray();
    return result;
}

int Accessible::childCount() const {
    return property("Accessible", "ChildCount").toInt();
}

std::optional<Accessible> Accessible::child(int index) const {
    const QList<QVariant> answer = ask("Accessible", "GetChildAtIndex", {index});
    if (answer.isEmpty())
        return std::nullopt;
    const auto reference = answer.first().value<QDBusArgument>();
    QString service;
    QDBusObjectPath path;
    reference.beginStructure();
    reference >> service >> path;
    reference.endStructure();
    if (path.path() == QLatin1String("/org/a11y/atspi/null"))
        return std::nullopt;
    return Accessible(bus_, service, path.path());
}

int Accessible::indexInParent() const {
    return ask("Accessible", "GetIndexInParent").value(0).toInt();
}

QRect Accessible::extents() const {
    const QList<QVariant> answer = ask("Component", "GetExtents", {relativeToScreen});
    if (answer.isEmpty())
        return {};
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto rectangle = answer.first().value<QDBusArgument>();
    rectangle.beginStructure();
    rectangle >> x >> y >> width >> height;
    rectangle.endStructure();
    return {x, y, width, height};
}

QString Accessible::text() const {
    return ask("Text", "GetText", {0, -1}).value(0).toString();
}

QRect Accessible::characterExtents(int offset) const {
    const QList<QVariant> answer = ask("Text", "GetCharacterExtents", {offset, relativeToScreen});
    return {answer.value(0).toInt(), answer.value(1).toInt(), answer.value(2).toInt(),
            answer.value(3).toInt()};
}

int Accessible::caretOffset() const {
    return property("Text", "CaretOffset").toInt();
}

std::optional<std::pair<int, int>> Accessible::selection() const {
    if (ask("Text", "GetNSelections").value(0).toInt() == 0)
        return std::nullopt;
    const QList<QVariant> answer = ask("Text", "GetSelection", {0});
    const std::pair range(answer.value(0).toInt(), answer.value(1).toInt());
    return range.first == range.second ? std::nullopt : std::optional(range);
}

QString Accessible::selectedText() const {
    const auto range = selection();
    return range ? ask("Text", "GetText", {range->first, range->second}).value(0).toString()
                 : QString();
}

bool Accessible::select(int start, int end) const {
    if (ask("Text", "GetNSelections").value(0).toInt() == 0)
        return isTrue(ask("Text", "AddSelection", {start, end}));
    return isTrue(ask("Text", "SetSelection", {0, start, end}));
}

bool Accessible::setText(const QString &text) const {
    return isTrue(ask("EditableText", "SetTextContents", {text}));
}

bool Accessible::setCaretOffset(int offset) const {
    return isTrue(ask("Text", "SetCaretOffset", {offset}));
}

bool Accessible::grabFocus() const {
    return isTrue(ask("Component", "GrabFocus"));
}

bool Accessible::doAction() const {
    return isTrue(ask("Action", "DoAction", {0}));
}

QList<QVariant> Accessible::ask(const char *interface, const char *method,
                                const QList<QVariant> &arguments) const {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service_, path_, fullName(interface), QLatin1String(method));
    call.setArguments(arguments);
    const QDBusMessage reply = bus_.call(call, QDBus::Block, callDeadlineMs);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QList<QVariant>();
}

QVariant Accessible::property(const char *interface, const char *name) const {
    QDBusMessage call = QDBusMessage::createMethodCall(
        service_, path_, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments({fullName(interface), QString::fromLatin1(name)});
    const QDBusMessage reply = bus_.call(call, QDBus::Block, callDeadlineMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    return reply.arguments().first().value<QDBusVariant>().variant();
}

} // namespace quillmender::harness
