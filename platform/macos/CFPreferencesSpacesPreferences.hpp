#pragma once

#include "CorvaneCore/platform/SpacesPreferences.hpp"

namespace corvane {

/// "app-bindings" of the "com.apple.spaces" preferences, through the preferences service. The
/// Dock reads them when it restarts. Written without a macOS compiler at hand: keep it thin.
class CFPreferencesSpacesPreferences final : public SpacesPreferences {
public:
    std::map<std::string, std::string> appBindings() const override;
    void setAppBindings(const std::map<std::string, std::string>& bindings) override;
};

} // namespace corvane
