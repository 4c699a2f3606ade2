#pragma once

#include "CorvaneCore/platform/PermissionStates.hpp"

namespace corvane {

/// The permissions as the system reports them. Notifications answer "unknown": the notification
/// centre answers only asynchronously and only inside an application bundle, which the tool is
/// not. Written without a macOS compiler at hand: keep it thin.
class MacPermissionStates final : public PermissionStates {
public:
    PermissionState state(Permission permission) const override;
};

} // namespace corvane
