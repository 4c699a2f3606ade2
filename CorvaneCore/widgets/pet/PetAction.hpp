#pragma once

#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <array>
#include <string_view>

namespace corvane {

/// How fast the machine makes the pet go, calmest first. A pet is awake in every gait but
/// `sleeping`.
enum class PetGait { sleeping, sitting, walking, running };
template <> struct EnumCases<PetGait> {
    static constexpr std::string_view typeName = "PetGait";
    static constexpr std::array<std::string_view, 4> names = {"sleeping", "sitting", "walking", "running"};
};

/// What the pet is drawn doing; each has its own frames.
enum class PetAction {
    sleeping,
    sitting,
    quirk,
    walking,
    running,
    jumping,
    eating,
    yawning,
    stretching,
    loafing,
    crouching,
    grooming,
};
template <> struct EnumCases<PetAction> {
    static constexpr std::string_view typeName = "PetAction";
    static constexpr std::array<std::string_view, 12> names = {
        "sleeping", "sitting", "quirk",      "walking", "running",   "jumping",
        "eating",   "yawning", "stretching", "loafing", "crouching", "grooming"};
};

} // namespace corvane
