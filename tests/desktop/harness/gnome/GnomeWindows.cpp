#include "desktop/harness/gnome/GnomeWindows.h"

#include "desktop/harness/Waiter.h"

#include <QJsonArray>

namespace quillmender::harness {

namespace {

WindowId idOf(const QJsonObject &window) {
    // The shell counts from 0, which is no window here.
    return static_cast<WindowId>(window[QStringLiteral("id")].toInteger(-1) + 1);
}

uint shellId(WindowId window) {
    return static_cast<uint>(window - 1);
}

} // namespace

QList<QJsonObject> GnomeWindows::list() const {
    QList<QJsonObject> windows;
    for (const QJsonValue &window : eyes_.state()[QStringLiteral("windows")].toArray())
        windows.append(window.toObject());
    return windows;
}

QJsonObject GnomeWindows::find(WindowId window) const {
    for (const QJsonObject &each : list()) {
        if (idOf(each) == window)
            return each;
    }
    return {};
}

QList<WindowId> GnomeWindows::all() const {
    QList<WindowId> windows;
    for (const QJsonObject &window : list())
        windows.append(idOf(window));
    return windows;
}

WindowId GnomeWindows::active() const {
    for (const QJsonObject &window : list()) {
        if (window[QStringLiteral("active")].toBool())
            return idOf(window);
    }
    return 0;
}

QString GnomeWindows::title(WindowId window) const {
    return find(window)[QStringLiteral("title")].toString();
}

qint64 GnomeWindows::processId(WindowId window) const {
    return find(window)[QStringLiteral("pid")].toInteger();
}

bool GnomeWindows::isViewable(WindowId window) const {
    return find(window)[QStringLiteral("shown")].toBool();
}

QString GnomeWindows::appId(WindowId window) const {
    return find(window)[QStringLiteral("app")].toString();
}

QRect GnomeWindows::geometry(WindowId window) const {
    const QJsonObject found = find(window);
    return {found[QStringLiteral("x")].toInt(), found[QStringLiteral("y")].toInt(),
            found[QStringLiteral("width")].toInt(), found[QStringLiteral("height")].toInt()};
}

WindowId GnomeWindows::titled(const QString &title) const {
    WindowId newest = 0;
    for (const QJsonObject &window : list()) {
        if (window[QStringLiteral("title")].toString() == title &&
            window[QStringLiteral("shown")].toBool())
            newest = idOf(window);
    }
    return newest;
}

WindowId GnomeWindows::openedBy(qint64 processId, const QList<WindowId> &before) const {
    WindowId newest = 0;
    for (const QJsonObject &window : list()) {
        if (window[QStringLiteral("pid")].toInteger() == processId &&
            window[QStringLiteral("shown")].toBool() && !before.contains(idOf(window)))
            newest = idOf(window);
    }
    return newest;
}

void GnomeWindows::activate(WindowId window) {
    eyes_.tell(QStringLiteral("Activate"), shellId(window));
    waitUntil([&] { return active() == window; }, QStringLiteral("the shell activates the window"));
}

void GnomeWindows::close(WindowId window) {
    eyes_.tell(QStringLiteral("Close"), shellId(window));
}

} // namespace quillmender::harness
