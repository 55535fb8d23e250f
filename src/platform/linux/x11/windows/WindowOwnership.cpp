#include "platform/linux/x11/windows/WindowOwnership.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/windows/WindowProcess.h"
#include "platform/linux/x11/windows/X11RunningApplication.h"

#include <QFile>

namespace quillmender::x11 {

namespace {

qint64 parentOf(qint64 process) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    // The name before the state can hold anything but ends with the last parenthesis.
    const QByteArray line = file.readAll();
    return line.mid(line.lastIndexOf(')') + 2).split(' ').value(1).toLongLong();
}

bool isDescendant(qint64 process, qint64 ancestor) {
    constexpr int deepest = 16;
    for (int i = 0; i < deepest && process > 1; ++i) {
        process = parentOf(process);
        if (process == ancestor)
            return true;
    }
    return false;
}

bool runsInWine(const X11Connection &connection, xcb_window_t window) {
    const auto wmClass = readProperty(connection, window, XCB_ATOM_WM_CLASS);
    return wmClass && wmClass->value.toLower().contains(".exe");
}

} // namespace

bool isStillItself(X11Connection &connection, const X11RunningApplication &application) {
    const bool isAsBefore =
        application.processId() == 0 ||
        processOfWindow(connection, application.window()) == application.processId();
    return isAsBefore && !application.isGone();
}

bool isSameApplication(X11Connection &connection, xcb_window_t first, xcb_window_t second) {
    const quint32 client = ~xcb_get_setup(connection.xcb())->resource_id_mask;
    if ((first & client) == (second & client))
        return true;
    const qint64 process = processOfClient(connection, first);
    return process != 0 && process == processOfClient(connection, second);
}

bool isActingFor(X11Connection &connection, xcb_window_t requestor, xcb_window_t window) {
    if (isSameApplication(connection, requestor, window) || runsInWine(connection, window))
        return true;
    const qint64 application = processOfClient(connection, window);
    return application > 1 && isDescendant(processOfClient(connection, requestor), application);
}

} // namespace quillmender::x11
