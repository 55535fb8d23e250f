#include "desktop/harness/wayland/SwayWindows.h"

#include "desktop/harness/Waiter.h"

#include <QJsonArray>

#include <algorithm>

namespace quillmender::harness {

namespace {

WindowId idOf(const QJsonObject &node) {
    return static_cast<WindowId>(node[QStringLiteral("id")].toInteger());
}

QRect rectangle(const QJsonValue &value) {
    return {value[QStringLiteral("x")].toInt(), value[QStringLiteral("y")].toInt(),
            value[QStringLiteral("width")].toInt(), value[QStringLiteral("height")].toInt()};
}

// Only what is a program's own has a process.
void collect(const QJsonObject &node, QList<QJsonObject> &found) {
    if (node.contains(QStringLiteral("pid")))
        found.append(node);
    for (const char *children : {"nodes", "floating_nodes"}) {
        for (const QJsonValue &child : node[QLatin1String(children)].toArray())
            collect(child.toObject(), found);
    }
}

} // namespace

QList<QJsonObject> SwayWindows::nodes() const {
    QList<QJsonObject> found;
    collect(ipc_.ask(SwayIpc::Message::getTree).object(), found);
    std::sort(found.begin(), found.end(),
              [](const QJsonObject &a, const QJsonObject &b) { return idOf(a) < idOf(b); });
    return found;
}

QJsonObject SwayWindows::node(WindowId window) const {
    for (const QJsonObject &node : nodes()) {
        if (idOf(node) == window)
            return node;
    }
    return {};
}

QList<WindowId> SwayWindows::all() const {
    QList<WindowId> windows;
    for (const QJsonObject &node : nodes())
        windows.append(idOf(node));
    return windows;
}

WindowId SwayWindows::active() const {
    for (const QJsonObject &node : nodes()) {
        if (node[QStringLiteral("focused")].toBool())
            return idOf(node);
    }
    return 0;
}

QString SwayWindows::title(WindowId window) const {
    return node(window)[QStringLiteral("name")].toString();
}

qint64 SwayWindows::processId(WindowId window) const {
    return node(window)[QStringLiteral("pid")].toInteger();
}

bool SwayWindows::isViewable(WindowId window) const {
    return node(window)[QStringLiteral("visible")].toBool();
}

QString SwayWindows::appId(WindowId window) const {
    return node(window)[QStringLiteral("app_id")].toString();
}

QRect SwayWindows::geometry(WindowId window) const {
    const QJsonObject node = this->node(window);
    const QRect inner = rectangle(node[QStringLiteral("window_rect")]);
    return inner.translated(rectangle(node[QStringLiteral("rect")]).topLeft());
}

WindowId SwayWindows::titled(const QString &title) const {
    WindowId newest = 0;
    for (const QJsonObject &node : nodes()) {
        if (node[QStringLiteral("name")].toString() == title)
            newest = idOf(node);
    }
    return newest;
}

WindowId SwayWindows::openedBy(qint64 processId, const QList<WindowId> &before) const {
    WindowId newest = 0;
    for (const QJsonObject &node : nodes()) {
        if (node[QStringLiteral("pid")].toInteger() == processId && !before.contains(idOf(node)))
            newest = idOf(node);
    }
    return newest;
}

void SwayWindows::activate(WindowId window) {
    ipc_.run(QStringLiteral("[con_id=%1] focus").arg(window));
    waitUntil([&] { return active() == window; }, QStringLiteral("sway focuses the window"));
}

void SwayWindows::close(WindowId window) {
    ipc_.run(QStringLiteral("[con_id=%1] kill").arg(window));
}

} // namespace quillmender::harness
