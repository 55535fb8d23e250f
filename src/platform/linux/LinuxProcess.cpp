#include "platform/Process.h"
#include "platform/linux/desktop/BaseDirectories.h"
#include "platform/linux/desktop/CoreFiles.h"
#include "platform/linux/desktop/ProxyVariables.h"
#include "platform/linux/desktop/ToolkitPlatform.h"

namespace quillmender {

void prepareProcess() {
    forbidCoreFiles();
    unsetRelativeBaseDirectories();
    completeProxyVariables();
    chooseToolkitPlatform();
}

} // namespace quillmender
