#include "platform/linux/wayland/WaylandWindowSystem.h"

#include "platform/linux/wayland/WaylandConnection.h"

namespace quillmender::wayland {

WindowSystemServices makeWindowSystem() {
    WindowSystemServices services;
    services.name = QStringLiteral("Wayland");
    const std::shared_ptr<WaylandConnection> connection = WaylandConnection::open();
    if (!connection)
        return services;
    services.shared = connection;
    return services;
}

} // namespace quillmender::wayland
