#include "doubles/CallLog.h"
#include "doubles/foundation/Errors.h"
#include "doubles/foundation/Objects.h"
#include "doubles/servicemanagement/LoginItemService.h"

#import <ServiceManagement/ServiceManagement.h>

namespace quillmender::doubles {

LoginItemService &LoginItemService::shared() {
    static LoginItemService service;
    return service;
}

namespace {

BOOL change(long status, NSError **error) {
    LoginItemService &service = LoginItemService::shared();
    // Left alone when there is nothing to tell: who looks at it instead of the result is wrong.
    if (service.refusesWithoutError)
        return NO;
    if (service.error) {
        *error = errorDescribed(*service.error);
        return NO;
    }
    *error = errorDescribed("set although it succeeded");
    service.status = status;
    return YES;
}

} // namespace

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation SMAppService

+ (SMAppService *)mainAppService {
    CallLog::shared().add("SMAppService mainAppService");
    return [[[SMAppService alloc] init] autorelease];
}

- (SMAppServiceStatus)status {
    CallLog::shared().add("SMAppService status");
    return static_cast<SMAppServiceStatus>(LoginItemService::shared().status);
}

- (BOOL)registerAndReturnError:(NSError **)error {
    CallLog::shared().add("SMAppService register");
    return change(LoginItemService::shared().statusAfterRegistration, error);
}

- (BOOL)unregisterAndReturnError:(NSError **)error {
    CallLog::shared().add("SMAppService unregister");
    return change(0, error);
}

+ (void)openSystemSettingsLoginItems {
    CallLog::shared().add("SMAppService openSystemSettingsLoginItems");
}

@end
