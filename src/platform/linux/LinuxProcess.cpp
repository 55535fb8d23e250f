#include "platform/Process.h"
#include "platform/linux/WaylandModule.h"
#include "platform/linux/desktop/BaseDirectories.h"
#include "platform/linux/desktop/CoreFiles.h"
#include "platform/linux/desktop/ProxyVariables.h"
#include "platform/linux/desktop/ToolkitPlatform.h"
#include "platform/linux/wayland/clipboard/ServingProcess.h"

namespace quillmender {

void prepareProcess() {
    forbidCoreFiles();
    unsetRelativeBaseDirectories();
    completeProxyVariables();
    chooseToolkitPlatform();
}

std::optional<int> runErrand(int argc, char *argv[]) {
    if (!wayland::isAskedToServe(argc, argv))
        return std::nullopt;
    return WaylandModule().serveClipboard(argc, argv);
}

} // namespace quillmender
