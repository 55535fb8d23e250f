#include "platform/linux/x11/X11WindowSystem.h"

#include "platform/linux/x11/X11Services.h"
#include "platform/linux/x11/windows/X11OwnWindows.h"
#include "platform/linux/x11/windows/X11Tray.h"

namespace quillmender::x11 {

WindowSystemServices makeWindowSystem(std::function<QIcon()> windowIcon) {
    WindowSystemServices services;
    services.name = QStringLiteral("X11");
    const std::shared_ptr<X11Services> x11 = X11Services::create();
    if (!x11)
        return services;
    services.shared = x11;
    services.workspace = std::move(x11->workspace);
    services.pasteboard = std::move(x11->pasteboard);
    services.hotKeys = std::move(x11->hotKeys);
    services.ownWindows =
        std::make_unique<X11OwnWindows>(*x11->windowStanding, std::move(windowIcon));
    services.frontmost = std::move(x11->frontmost);
    services.tray = std::make_unique<X11Tray>();
    services.backends = {
        {Capability::sourceApplications, QStringLiteral("EWMH, else the input focus")},
        {Capability::clipboard, QStringLiteral("selections and XFixes")},
        {Capability::hotKeys, QStringLiteral("passive grabs")},
        {Capability::panel, QStringLiteral("EWMH")},
    };
    if (x11->connection->hasTest()) {
        services.chords = std::move(x11->chords);
        services.backends[Capability::chords] = QStringLiteral("XTest");
    } else {
        services.missing[Capability::chords] =
            QStringLiteral("This X server lacks the XTest extension, so Quillmender cannot copy or "
                           "paste for you.");
    }
    return services;
}

} // namespace quillmender::x11
