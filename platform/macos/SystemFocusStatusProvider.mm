#include "platform/macos/SystemFocusStatusProvider.hpp"

#import <Intents/INFocusStatus.h>
#import <Intents/INFocusStatusCenter.h>

namespace corvane {

std::optional<bool> SystemFocusStatusProvider::isFocused() const {
    @autoreleasepool {
        NSNumber* focused = INFocusStatusCenter.defaultCenter.focusStatus.isFocused;
        if (focused == nil) return std::nullopt;
        return static_cast<bool>(focused.boolValue);
    }
}

FocusAuthorization SystemFocusStatusProvider::authorization() const {
    switch (INFocusStatusCenter.defaultCenter.authorizationStatus) {
    case INFocusStatusAuthorizationStatusNotDetermined:
        return FocusAuthorization::notDetermined;
    case INFocusStatusAuthorizationStatusRestricted:
    case INFocusStatusAuthorizationStatusDenied:
        return FocusAuthorization::denied;
    case INFocusStatusAuthorizationStatusAuthorized:
        return FocusAuthorization::authorized;
    }
    return FocusAuthorization::denied;
}

void SystemFocusStatusProvider::requestAuthorization() {
    // The answer is read back through `authorization` and the monitor's next poll.
    [INFocusStatusCenter.defaultCenter requestAuthorizationWithCompletionHandler:^(INFocusStatusAuthorizationStatus){
    }];
}

} // namespace corvane
