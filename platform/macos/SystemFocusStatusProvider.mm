#include "platform/macos/SystemFocusStatusProvider.hpp"

#import <Intents/Intents.h>

namespace corvane {

std::optional<bool> SystemFocusStatusProvider::isFocused() const {
    @autoreleasepool {
        NSNumber* focused = INFocusStatusCenter.defaultCenter.focusStatus.isFocused;
        if (focused == nil) return std::nullopt;
        return static_cast<bool>(focused.boolValue);
    }
}

bool SystemFocusStatusProvider::isAuthorized() const {
    @autoreleasepool {
        return INFocusStatusCenter.defaultCenter.authorizationStatus == INFocusStatusAuthorizationStatusAuthorized;
    }
}

} // namespace corvane
