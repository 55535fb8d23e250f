#include "platform/linux/wayland/module/ModuleFunctions.h"

#include "platform/linux/wayland/WaylandWindowSystem.h"
#include "platform/linux/wayland/clipboard/ServingProcess.h"

extern "C" {

Q_DECL_EXPORT void
quillmender_make_wayland_window_system(quillmender::WindowSystemServices &services,
                                       const quillmender::WindowSystemNeeds &needs) {
    services = quillmender::wayland::makeWindowSystem(needs);
}

Q_DECL_EXPORT int quillmender_serve_clipboard(int argc, char *argv[]) {
    return quillmender::wayland::serveClipboard(argc, argv);
}
}
