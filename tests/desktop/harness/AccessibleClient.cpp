#include "desktop/harness/AccessibleClient.h"

#include "desktop/harness/AccessibilityBus.h"
#include "desktop/harness/HarnessError.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace quillmender::harness {

namespace {

constexpr int deepest = 60;

// Answers false when the visitor has seen enough.
bool visit(const Accessible &node, int depth,
           const std::function<bool(const Accessible &, int)> &visitor) {
    if (!visitor(node, depth))
        return false;
    if (depth == deepest)
        return true;
    for (const Accessible &child : node.children()) {
        if (!visit(child, depth + 1, visitor))
            return false;
    }
    return true;
}

AccessibleClient::Predicate byRoleAndName(const QString &roleName, const QString &name) {
    return [=](const Accessible &node) {
        return (name.isEmpty() || node.name() == name) &&
               (roleName.isEmpty() || node.roleName() == roleName);
    };
}

} // namespace

AccessibleClient::AccessibleClient(const AccessibilityBus &bus) : bus_(bus.connection()) {}

std::optional<Accessible> AccessibleClient::application(qint64 processId) const {
    const Accessible registry(bus_, QStringLiteral("org.a11y.atspi.Registry"),
                              QStringLiteral("/org/a11y/atspi/accessible/root"));
    for (const Accessible &application : registry.children()) {
        const QDBusReply<uint> owner = bus_.interface()->servicePid(application.service());
        if (owner.isValid() && owner.value() == processId)
            return application;
    }
    return std::nullopt;
}

std::optional<Accessible> AccessibleClient::find(qint64 processId,
                                                 const Predicate &predicate) const {
    std::optional<Accessible> found;
    if (const auto root = application(processId)) {
        visit(*root, 0, [&](const Accessible &node, int) {
            if (predicate(node))
                found = node;
            return !found;
        });
    }
    return found;
}

QList<Accessible> AccessibleClient::findAll(qint64 processId, const Predicate &predicate) const {
    QList<Accessible> found;
    if (const auto root = application(processId)) {
        visit(*root, 0, [&](const Accessible &node, int) {
            if (predicate(node))
                found.append(node);
            return true;
        });
    }
    return found;
}

std::optional<Accessible> AccessibleClient::find(qint64 processId, const QString &roleName,
                                                 const QString &name) const {
    return find(processId, byRoleAndName(roleName, name));
}

Accessible AccessibleClient::waitFor(qint64 processId, const QString &roleName, const QString &name,
                                     std::chrono::milliseconds deadline) const {
    std::optional<Accessible> found;
    const auto isThere = [&] { return (found = find(processId, roleName, name)).has_value(); };
    if (!becomesTrue(isThere, deadline)) {
        throw HarnessError(
            QStringLiteral("no %1 \"%2\" among:\n%3").arg(roleName, name, tree(processId)));
    }
    return *found;
}

Accessible AccessibleClient::waitForFocusedText(qint64 processId,
                                                std::chrono::milliseconds deadline) const {
    std::optional<Accessible> found;
    const auto isThere = [&] {
        found = find(processId, [](const Accessible &node) {
            return node.hasState(AccessibleState::focused) &&
                   node.interfaces().contains(QStringLiteral("org.a11y.atspi.Text"));
        });
        return found.has_value();
    };
    if (!becomesTrue(isThere, deadline))
        throw HarnessError(QStringLiteral("no focused text among:\n%1").arg(tree(processId)));
    return *found;
}

QString AccessibleClient::tree(qint64 processId) const {
    QString lines;
    if (const auto root = application(processId)) {
        visit(*root, 0, [&](const Accessible &node, int depth) {
            const QRect place = node.extents();
            lines += QStringLiteral("%1%2 \"%3\" %4,%5 %6x%7\n")
                         .arg(QString(qsizetype{2} * depth, u' '), node.roleName(), node.name())
                         .arg(place.x())
                         .arg(place.y())
                         .arg(place.width())
                         .arg(place.height());
            return true;
        });
    }
    return lines;
}

} // namespace quillmender::harness
