#include "contract/Contract.h"
#include "platform/LoginItem.h"

#import <ServiceManagement/ServiceManagement.h>

using quillmender::LoginItemStatus;

static_assert(SMAppServiceStatusNotRegistered == static_cast<int>(LoginItemStatus::notRegistered));
static_assert(SMAppServiceStatusEnabled == static_cast<int>(LoginItemStatus::enabled));
static_assert(SMAppServiceStatusRequiresApproval ==
              static_cast<int>(LoginItemStatus::requiresApproval));
static_assert(SMAppServiceStatusNotFound == static_cast<int>(LoginItemStatus::notFound));
