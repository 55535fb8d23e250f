#include "desktop/harness/WindowManager.h"

#include "desktop/harness/Waiter.h"
#include "desktop/harness/XcbConnection.h"

namespace quillmender::harness {

namespace {

/// Only one program can ask to be told of the windows that are to be mapped.
bool isManaged(XcbConnection &connection) {
    const XcbPointer<xcb_get_window_attributes_reply_t> root(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), connection.root()), nullptr));
    return root && root->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
}

bool isAnnounced(XcbConnection &connection) {
    const auto check = connection.cardinal(connection.root(), "_NET_SUPPORTING_WM_CHECK");
    // The property of an earlier manager can be left over; its window cannot.
    return check && connection.cardinal(*check, "_NET_SUPPORTING_WM_CHECK") == check;
}

} // namespace

WindowManager::WindowManager(XcbConnection &connection, const QProcessEnvironment &environment,
                             const QString &logFile, const QStringList &command)
    : process_({.program = command.value(0, QStringLiteral("openbox")),
                .arguments = command.isEmpty() ? QStringList(QStringLiteral("--sm-disable"))
                                               : command.mid(1),
                .environment = environment,
                .logFile = logFile,
                .input = {},
                .pipeOutput = false,
                .workingDirectory = {}}) {
    const bool announcesItself = command.value(0) != QStringLiteral("twm");
    waitUntil([&] { return announcesItself ? isAnnounced(connection) : isManaged(connection); },
              QStringLiteral("the window manager is there"));
}

} // namespace quillmender::harness
