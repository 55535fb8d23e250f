#include "platform/Process.h"
#include "platform/linux/desktop/BaseDirectories.h"
#include "platform/linux/desktop/CoreFiles.h"

namespace quillmender {

void prepareProcess() {
    forbidCoreFiles();
    unsetRelativeBaseDirectories();
}

} // namespace quillmender
