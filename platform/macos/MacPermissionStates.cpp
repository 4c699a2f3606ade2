#include "platform/macos/MacPermissionStates.hpp"

#include "platform/macos/SystemFocusStatusProvider.hpp"

#include <ApplicationServices/ApplicationServices.h>

namespace corvane {

PermissionState MacPermissionStates::state(Permission permission) const {
    switch (permission) {
    case Permission::accessibility:
        // The system tells only whether it is allowed, not whether the user was ever asked.
        return AXIsProcessTrusted() ? PermissionState::allowed : PermissionState::notAllowed;
    case Permission::focusStatus:
        switch (SystemFocusStatusProvider().authorization()) {
        case FocusAuthorization::notDetermined:
            return PermissionState::notAsked;
        case FocusAuthorization::denied:
            return PermissionState::notAllowed;
        case FocusAuthorization::authorized:
            return PermissionState::allowed;
        case FocusAuthorization::unavailable:
            return PermissionState::notNeeded;
        }
        return PermissionState::unknown;
    case Permission::notifications:
        return PermissionState::unknown;
    }
    return PermissionState::unknown;
}

} // namespace corvane
