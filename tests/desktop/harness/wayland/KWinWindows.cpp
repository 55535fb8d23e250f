#include "desktop/harness/wayland/KWinWindows.h"

#include "desktop/harness/Waiter.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace quillmender::harness {

namespace {

const auto listScript = QStringLiteral(R"(
report(JSON.stringify(workspace.windowList().map(w => ({
    id: '' + w.internalId, pid: w.pid, title: '' + w.caption, app: '' + w.desktopFileName,
    shown: !w.minimized && !w.hidden, active: w === workspace.activeWindow,
    x: w.bufferGeometry.x, y: w.bufferGeometry.y,
    width: w.bufferGeometry.width, height: w.bufferGeometry.height
}))));
)");

} // namespace

QList<QJsonObject> KWinWindows::list() const {
    QList<QJsonObject> windows;
    const auto list = QJsonDocument::fromJson(scripting_.run(listScript).toUtf8()).array();
    for (const QJsonValue &window : list)
        windows.append(window.toObject());
    return windows;
}

QJsonObject KWinWindows::find(WindowId window) const {
    for (const QJsonObject &each : list()) {
        if (idOf(each) == window)
            return each;
    }
    return {};
}

WindowId KWinWindows::idOf(const QJsonObject &window) const {
    const QString name = window[QStringLiteral("id")].toString();
    if (!seen_.contains(name))
        seen_.append(name);
    return static_cast<WindowId>(seen_.indexOf(name) + 1);
}

QList<WindowId> KWinWindows::all() const {
    QList<WindowId> windows;
    for (const QJsonObject &window : list())
        windows.append(idOf(window));
    return windows;
}

WindowId KWinWindows::active() const {
    for (const QJsonObject &window : list()) {
        if (window[QStringLiteral("active")].toBool())
            return idOf(window);
    }
    return 0;
}

QString KWinWindows::title(WindowId window) const {
    return find(window)[QStringLiteral("title")].toString();
}

qint64 KWinWindows::processId(WindowId window) const {
    return find(window)[QStringLiteral("pid")].toInteger();
}

bool KWinWindows::isViewable(WindowId window) const {
    return find(window)[QStringLiteral("shown")].toBool();
}

QString KWinWindows::appId(WindowId window) const {
    return find(window)[QStringLiteral("app")].toString();
}

QRect KWinWindows::geometry(WindowId window) const {
    const QJsonObject found = find(window);
    return QRectF(found[QStringLiteral("x")].toDouble(), found[QStringLiteral("y")].toDouble(),
                  found[QStringLiteral("width")].toDouble(),
                  found[QStringLiteral("height")].toDouble())
        .toRect();
}

WindowId KWinWindows::titled(const QString &title) const {
    WindowId newest = 0;
    for (const QJsonObject &window : list()) {
        if (window[QStringLiteral("title")].toString() == title &&
            window[QStringLiteral("shown")].toBool())
            newest = idOf(window);
    }
    return newest;
}

WindowId KWinWindows::openedBy(qint64 processId, const QList<WindowId> &before) const {
    WindowId newest = 0;
    for (const QJsonObject &window : list()) {
        if (window[QStringLiteral("pid")].toInteger() == processId &&
            !before.contains(idOf(window)))
            newest = idOf(window);
    }
    return newest;
}

void KWinWindows::activate(WindowId window) {
    tell(window, QStringLiteral("workspace.activeWindow = w"));
    waitUntil([&] { return active() == window; }, QStringLiteral("KWin activates the window"));
}

void KWinWindows::close(WindowId window) {
    tell(window, QStringLiteral("w.closeWindow()"));
}

void KWinWindows::tell(WindowId window, const QString &order) {
    scripting_.run(QStringLiteral("for (const w of workspace.windowList()) "
                                  "{ if ('' + w.internalId === '%1') { %2; } } report('done');")
                       .arg(seen_.value(static_cast<qsizetype>(window) - 1), order));
}

} // namespace quillmender::harness
