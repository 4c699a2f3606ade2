#pragma once

#include <string_view>

namespace corvane {

/// The system permissions Corvane asks for.
enum class Permission { accessibility, focusStatus, notifications };

enum class PermissionState {
    allowed,
    notAllowed,
    /// The user has not been asked yet.
    notAsked,
    /// The system has no such permission: what needs it works without, or not at all.
    notNeeded,
    /// The system would not tell.
    unknown,
};

/// What the user has allowed this application.
class PermissionStates {
public:
    virtual ~PermissionStates() = default;
    virtual PermissionState state(Permission permission) const = 0;
};

} // namespace corvane
