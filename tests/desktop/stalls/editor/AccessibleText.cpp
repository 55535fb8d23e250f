#include "desktop/stalls/editor/AccessibleText.h"

#include "desktop/stalls/editor/ObjectReference.h"

#include <QApplication>
#include <QDBusVariant>
#include <QTextCursor>
#include <QWindow>

namespace quillmender {

namespace {

const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");
const QString framePath = QStringLiteral("/org/a11y/atspi/accessible/frame");
const QString fieldPath = QStringLiteral("/org/a11y/atspi/accessible/field");
const QString registry = QStringLiteral("org.a11y.atspi.Registry");

// Of the protocol's enumerations of roles and states.
constexpr uint applicationRole = 75;
constexpr uint frameRole = 23;
constexpr uint textRole = 61;
constexpr int active = 1;
constexpr int editable = 7;
constexpr int enabled = 8;
constexpr int focusable = 11;
constexpr int focused = 12;
constexpr int sensitive = 24;
constexpr int showing = 25;
constexpr int visible = 30;

QString atspi(const char *name) {
    return QStringLiteral("org.a11y.atspi.") + QLatin1String(name);
}

QList<uint> stateSet(const QList<int> &states) {
    uint lower = 0;
    for (const int state : states)
        lower |= 1U << uint(state);
    return {lower, 0};
}

} // namespace

AccessibleText::AccessibleText(QPlainTextEdit &field, QDBusConnection bus)
    : field_(field),
      bus_(std::move(bus)) {
    qDBusRegisterMetaType<ObjectReference>();
    qDBusRegisterMetaType<QList<ObjectReference>>();
    qDBusRegisterMetaType<QList<uint>>();
}

void AccessibleText::join() {
    QDBusMessage greeting = QDBusMessage::createMethodCall(registry, rootPath, atspi("Socket"),
                                                           QStringLiteral("Embed"));
    greeting << QVariant::fromValue(ObjectReference{bus_.baseService(), QDBusObjectPath(rootPath)});
    bus_.call(greeting);
    // Queued: the window is told that it is active at the same time.
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &AccessibleText::announceFocus,
            Qt::QueuedConnection);
    announceFocus();
}

void AccessibleText::announceFocus() {
    if (!field_.isActiveWindow())
        return;
    QDBusMessage activation =
        QDBusMessage::createSignal(framePath, atspi("Event.Window"), QStringLiteral("Activate"));
    activation << QString() << 0 << 0 << QVariant::fromValue(QDBusVariant(0)) << QVariantMap();
    bus_.send(activation);
    QDBusMessage gain = QDBusMessage::createSignal(fieldPath, atspi("Event.Object"),
                                                   QStringLiteral("StateChanged"));
    gain << QStringLiteral("focused") << 1 << 0 << QVariant::fromValue(QDBusVariant(0))
         << QVariantMap();
    bus_.send(gain);
}

QDBusMessage AccessibleText::carryOut(const QDBusMessage &call) {
    if (call.member() == QStringLiteral("GetSelection")) {
        const QTextCursor cursor = field_.textCursor();
        return call.createReply(QVariantList{cursor.selectionStart(), cursor.selectionEnd()});
    }
    if (call.member() == QStringLiteral("Set"))
        return call.createReply();
    const QVariant value = member(call);
    return value.isValid() ? call.createReply(value)
                           : call.createErrorReply(QDBusError::UnknownMethod, call.member());
}

QVariant AccessibleText::member(const QDBusMessage &call) {
    const QString name = call.member();
    const QString path = call.path();
    if (name == QStringLiteral("Get")) {
        const QVariant value = propertyNamed(call.arguments().value(1).toString(), path);
        return value.isValid() ? QVariant::fromValue(QDBusVariant(value)) : QVariant();
    }
    if (name == QStringLiteral("GetChildren")) {
        QList<ObjectReference> children;
        if (path == rootPath)
            children.append({bus_.baseService(), QDBusObjectPath(framePath)});
        if (path == framePath)
            children.append({bus_.baseService(), QDBusObjectPath(fieldPath)});
        return QVariant::fromValue(children);
    }
    if (name == QStringLiteral("GetRole"))
        return path == rootPath ? applicationRole : path == framePath ? frameRole : textRole;
    if (name == QStringLiteral("GetState"))
        return QVariant::fromValue(states(path));
    if (name == QStringLiteral("GetInterfaces"))
        return interfaces(path);
    if (path == fieldPath)
        return textMember(call);
    return {};
}

QVariant AccessibleText::propertyNamed(const QString &name, const QString &path) const {
    if (name == QStringLiteral("ToolkitName"))
        return QStringLiteral("Scripted");
    if (name == QStringLiteral("Name"))
        return path == fieldPath ? QString() : field_.window()->windowTitle();
    if (path != fieldPath)
        return {};
    if (name == QStringLiteral("CharacterCount"))
        return int(field_.toPlainText().size());
    if (name == QStringLiteral("CaretOffset"))
        return field_.textCursor().position();
    return {};
}

QVariant AccessibleText::textMember(const QDBusMessage &call) {
    const QString name = call.member();
    const int first = call.arguments().value(0).toInt();
    const int second = call.arguments().value(1).toInt();
    if (name == QStringLiteral("GetNSelections"))
        return field_.textCursor().hasSelection() ? 1 : 0;
    if (name == QStringLiteral("GetText"))
        return field_.toPlainText().mid(first, second < 0 ? -1 : second - first);
    if (name == QStringLiteral("AddSelection"))
        return select(first, second);
    if (name == QStringLiteral("SetSelection"))
        return select(second, call.arguments().value(2).toInt());
    if (name == QStringLiteral("SetCaretOffset"))
        return select(first, first);
    return edit(call);
}

QVariant AccessibleText::edit(const QDBusMessage &call) {
    const QVariantList arguments = call.arguments();
    const int first = arguments.value(0).toInt();
    QTextCursor cursor(field_.document());
    if (call.member() == QStringLiteral("SetTextContents")) {
        cursor.select(QTextCursor::Document);
        cursor.insertText(arguments.value(0).toString());
        return true;
    }
    const bool isInsertion = call.member() == QStringLiteral("InsertText");
    if (!isInsertion && call.member() != QStringLiteral("DeleteText"))
        return {};
    const int end = isInsertion ? first : arguments.value(1).toInt();
    if (!isWithin(first, end))
        return false;
    cursor.setPosition(first);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.insertText(isInsertion ? arguments.value(1).toString() : QString());
    return true;
}

bool AccessibleText::select(qsizetype start, qsizetype end) {
    if (!isWithin(start, end))
        return false;
    QTextCursor cursor = field_.textCursor();
    cursor.setPosition(int(start));
    cursor.setPosition(int(end), QTextCursor::KeepAnchor);
    field_.setTextCursor(cursor);
    return true;
}

bool AccessibleText::isWithin(qsizetype start, qsizetype end) const {
    return start >= 0 && start <= end && end <= field_.toPlainText().size();
}

QList<uint> AccessibleText::states(const QString &path) const {
    QList<int> states{enabled, sensitive, showing, visible};
    if (path == framePath && field_.isActiveWindow())
        states.append(active);
    if (path == fieldPath)
        states.append({editable, focusable});
    if (path == fieldPath && field_.isActiveWindow())
        states.append(focused);
    return stateSet(states);
}

QStringList AccessibleText::interfaces(const QString &path) const {
    QStringList interfaces{atspi("Accessible")};
    if (path == rootPath)
        interfaces.append(atspi("Application"));
    if (path == fieldPath)
        interfaces.append({atspi("Text"), atspi("EditableText")});
    return interfaces;
}

} // namespace quillmender
