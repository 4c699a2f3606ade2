#include "platform/macos/LoginItem.hpp"

#import <Foundation/Foundation.h>
#import <ServiceManagement/SMAppService.h>

namespace corvane::LoginItem {

std::optional<std::string> setEnabled(bool enabled) {
    SMAppService* service = SMAppService.mainAppService;
    if (enabled == (service.status == SMAppServiceStatusEnabled)) return std::nullopt;
    NSError* error = nil;
    BOOL done = enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
    if (done || (enabled && service.status == SMAppServiceStatusRequiresApproval)) return std::nullopt;
    const char* reason = error.localizedDescription.UTF8String;
    return std::string(reason != nullptr ? reason : "refused");
}

} // namespace corvane::LoginItem
