#pragma once

#include "CorvaneCore/platform/FocusStatusProvider.hpp"

namespace corvane {

/// The system's Focus state through the Intents framework's focus status centre. Unknown until
/// the user allows Corvane to read it. Written without a macOS compiler at hand: keep it thin.
class SystemFocusStatusProvider final : public FocusStatusProvider {
public:
    std::optional<bool> isFocused() const override;
    FocusAuthorization authorization() const override;
    void requestAuthorization() override;
};

} // namespace corvane
