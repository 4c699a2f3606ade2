#pragma once

#include "CorvaneCore/looks/SliderRange.hpp"

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>

namespace corvane {

/// The user's overrides laid over one theme; every absent field keeps the theme's value.
struct DockThemeCustomization {
    static constexpr SliderRange opacityRange{0, 1};
    static constexpr SliderRange borderWidthRange{0, 4};
    static constexpr SliderRange cornerRadiusRange{0, 0.6};

    std::optional<std::string> topHex;
    std::optional<std::string> bottomHex;
    std::optional<double> opacity;
    std::optional<bool> showsBorder;
    std::optional<std::string> borderHex;
    std::optional<double> borderWidth;
    std::optional<bool> showsGlow;
    std::optional<std::string> glowHex;
    std::optional<double> cornerRadiusScale;
    std::optional<bool> showsReflections;
    std::optional<std::string> separatorHex;
    std::optional<bool> showsSnowfall;
    std::optional<bool> showsSnowCap;
    std::optional<bool> showsLights;

    bool isEmpty() const { return *this == DockThemeCustomization{}; }

    bool operator==(const DockThemeCustomization&) const = default;
};

/// An object with the set fields only, keys named as the fields.
nlohmann::json encodeDockThemeCustomization(const DockThemeCustomization& customization);
/// Never fails: a missing key, or one whose value has the wrong type, stays absent.
DockThemeCustomization decodeDockThemeCustomization(const nlohmann::json& object);

} // namespace corvane
