#include "doubles/Frameworks.h"

#include "doubles/appkit/GeneralPasteboard.h"
#include "doubles/appkit/RunningApplications.h"
#include "doubles/appkit/StatusArea.h"
#include "doubles/appkit/Symbols.h"
#include "doubles/appkit/SystemColors.h"
#include "doubles/foundation/Bundle.h"
#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Observers.h"
#include "doubles/servicemanagement/LoginItemService.h"

namespace quillmender::doubles {

void resetFrameworks() {
    GeneralPasteboard::shared() = {};
    RunningApplications::shared() = {};
    StatusArea::shared() = {};
    Symbols::shared() = {};
    SystemColors::shared() = {};
    Bundle::shared() = {};
    LoginItemService::shared() = {};
    forgetObservers();
    forgetDeadObjects();
}

} // namespace quillmender::doubles
