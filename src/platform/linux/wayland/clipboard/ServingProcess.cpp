#include "platform/linux/wayland/clipboard/ServingProcess.h"

#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/clipboard/ClipboardServer.h"
#include "platform/linux/wayland/clipboard/ContentsFile.h"

#include <QCoreApplication>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace quillmender::wayland {

int serveClipboard(int argc, char *argv[]) {
    Descriptor file(serving::contentsFile);
    Descriptor starter(serving::starter);
    ::fcntl(starter.get(), F_SETFD, FD_CLOEXEC);
    const auto contents = readContentsFile(file);
    if (!contents)
        return EXIT_FAILURE;
    file.close();
    // It belongs to no folder, which could not be unmounted then.
    if (::chdir("/") != 0)
        return EXIT_FAILURE;

    const QCoreApplication application(argc, argv);
    const auto connection = WaylandConnection::open();
    if (!connection)
        return EXIT_FAILURE;
    const auto control = DataControl::create(*connection);
    if (!control)
        return EXIT_FAILURE;
    ClipboardServer server(*control, std::move(starter), *contents);
    QObject::connect(&server, &ClipboardServer::done, &application, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    const auto begun = server.begin();
    return QCoreApplication::exec();
}

} // namespace quillmender::wayland
