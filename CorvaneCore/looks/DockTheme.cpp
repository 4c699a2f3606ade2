#include "CorvaneCore/looks/DockTheme.hpp"

#include "CorvaneCore/support/RawValue.hpp"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

using Background = DockTheme::Background;
using Decoration = DockTheme::Decoration;

std::vector<DockTheme> makeAllThemes() {
    using Gradient = Background::Gradient;
    return {
        {.id = "native", .name = "Native", .background = Background::Glass{}, .cornerRadiusScale = 0.4},
        {.id = "liquid",
         .name = "Liquid Glass",
         .background = Background::Liquid{std::nullopt, 0.25},
         .cornerRadiusScale = 0.5},
        {.id = "midnight",
         .name = "Midnight",
         .background = Background::Frosted{"#0B1020", 0.55},
         .cornerRadiusScale = 0.4,
         .borderHex = "#FFFFFF",
         .borderWidth = 0.5,
         .separatorHex = "#FFFFFF"},
        {.id = "rocket",
         .name = "Rocket",
         .background = Gradient{"#3A3F4B", "#0E1014", 0.82},
         .cornerRadiusScale = 0.18,
         .borderHex = "#8FB6FF",
         .borderWidth = 1.0,
         .glowHex = "#4C8DFF",
         .showsReflections = true,
         .indicatorHex = "#7FB2FF",
         .separatorHex = "#8FB6FF"},
        {.id = "aqua",
         .name = "Aqua Shelf",
         .background = Background::Shelf{"#F2F5FA", "#A9B4C2", 0.72},
         .cornerRadiusScale = 0.08,
         .borderHex = "#FFFFFF",
         .borderWidth = 1.0,
         .showsReflections = true,
         .indicatorHex = "#5AC8FA",
         .separatorHex = "#6B7280"},
        {.id = "neon",
         .name = "Neon",
         .background = Gradient{"#0A0A12", "#000000", 0.88},
         .cornerRadiusScale = 0.5,
         .borderHex = "#FF2BD6",
         .borderWidth = 1.5,
         .glowHex = "#00E5FF",
         .indicatorHex = "#00E5FF",
         .separatorHex = "#FF2BD6"},
        {.id = "canarinho",
         .name = "Canarinho",
         .background = Gradient{"#FFDF00", "#009C3B", 0.85},
         .cornerRadiusScale = 0.45,
         .borderHex = "#002776",
         .borderWidth = 1.5,
         .indicatorHex = "#002776",
         .separatorHex = "#002776"},
        {.id = "paper",
         .name = "Paper",
         .background = Gradient{"#FFFFFF", "#F1F1EE", 0.96},
         .cornerRadiusScale = 0.3,
         .borderHex = "#D4D4D0",
         .borderWidth = 1.0,
         .indicatorHex = "#3F3F46",
         .separatorHex = "#A1A1AA"},
        {.id = "floating",
         .name = "Floating",
         .background = Background::None{},
         .cornerRadiusScale = 0.4,
         .showsReflections = true},
    };
}

std::vector<DockTheme> makeSeasonalThemes() {
    using Gradient = Background::Gradient;
    using P = DockTheme::Particles;
    using E = DockTheme::EdgeCover;
    using B = DockTheme::Bulb;
    using Outline = DockTheme::Outline;
    return {
        {.id = "halloween",
         .name = "Halloween",
         .background = Gradient{"#3B1A55", "#12081B", 0.92},
         .cornerRadiusScale = 0.3,
         .borderHex = "#FF8A1F",
         .borderWidth = 1.0,
         .indicatorHex = "#FF7A00",
         .separatorHex = "#FF8A1F",
         .decoration = Decoration{P::bats, E::cobwebs, {"#FF7A00", "#FF9A1F", "#FFB347"}, B::pumpkin, {}}},
        {.id = "haunted-night",
         .name = "Haunted Night",
         .background = Gradient{"#18302F", "#060E0F", 0.82},
         .cornerRadiusScale = 0.4,
         .borderHex = "#A8FFB8",
         .borderWidth = 1.0,
         .indicatorHex = "#A8FFB8",
         .separatorHex = "#A8FFB8",
         .decoration = Decoration{P::fog, E::slime, {"#B8FF9E", "#D2B8FF"}, B::ghost, {}}},
        {.id = "candy-corn",
         .name = "Candy Corn",
         .background = Gradient{"#FFF8EC", "#F5E5CC", 0.95},
         .cornerRadiusScale = 0.35,
         .indicatorHex = "#E8650F",
         .separatorHex = "#E8650F",
         .decoration = Decoration{P::leaves,
                                  E::leaves,
                                  {"#F07C1A", "#8A4FB8", "#F07C1A", "#FFD23F"},
                                  B::pumpkin,
                                  Outline::candies()}},
        {.id = "christmas",
         .name = "Christmas",
         .background = Gradient{"#1F5C3F", "#0B2B1D", 0.92},
         .cornerRadiusScale = 0.3,
         .borderHex = "#F2D27A",
         .borderWidth = 1.0,
         .indicatorHex = "#FF4B4B",
         .separatorHex = "#F2D27A",
         .decoration =
             Decoration{P::snow, E::snow, {"#FF3B30", "#FFD60A", "#34C759", "#0A84FF"}, B::bulb, {}}},
        {.id = "snowy-night",
         .name = "Snowy Night",
         .background = Gradient{"#1B2A4A", "#0A1226", 0.8},
         .cornerRadiusScale = 0.4,
         .borderHex = "#CFE3FF",
         .borderWidth = 1.0,
         .indicatorHex = "#CFE3FF",
         .separatorHex = "#CFE3FF",
         .decoration = Decoration{P::snow, E::snow, {"#FFF4D6", "#FFE8A3"}, B::bulb, {}}},
        {.id = "candy-cane",
         .name = "Candy Cane",
         .background = Gradient{"#FFFFFF", "#F3E9E9", 0.95},
         .cornerRadiusScale = 0.35,
         .indicatorHex = "#D7263D",
         .separatorHex = "#D7263D",
         .decoration = Decoration{P::snow,
                                  E::snow,
                                  {"#D7263D", "#1E8E3E", "#D7263D", "#FFD60A"},
                                  B::bulb,
                                  Outline::stripes("#D7263D")}},
    };
}

} // namespace

std::optional<Background::Colors> Background::colors() const {
    switch (kind()) {
    case Kind::liquid: {
        const auto& liquid = std::get<Liquid>(value);
        if (!liquid.tintHex) return std::nullopt;
        return Colors{*liquid.tintHex, std::nullopt, liquid.opacity};
    }
    case Kind::frosted: {
        const auto& frosted = std::get<Frosted>(value);
        return Colors{frosted.tintHex, std::nullopt, frosted.opacity};
    }
    case Kind::gradient: {
        const auto& gradient = std::get<Gradient>(value);
        return Colors{gradient.topHex, gradient.bottomHex, gradient.opacity};
    }
    case Kind::shelf: {
        const auto& shelf = std::get<Shelf>(value);
        return Colors{shelf.topHex, shelf.bottomHex, shelf.opacity};
    }
    case Kind::glass:
    case Kind::none:
        return std::nullopt;
    }
    return std::nullopt;
}

Background Background::customized(const DockThemeCustomization& c) const {
    switch (kind()) {
    case Kind::liquid: {
        const auto& liquid = std::get<Liquid>(value);
        return Liquid{c.topHex ? c.topHex : liquid.tintHex, c.opacity.value_or(liquid.opacity)};
    }
    case Kind::frosted: {
        const auto& frosted = std::get<Frosted>(value);
        return Frosted{c.topHex.value_or(frosted.tintHex), c.opacity.value_or(frosted.opacity)};
    }
    case Kind::gradient: {
        const auto& gradient = std::get<Gradient>(value);
        return Gradient{c.topHex.value_or(gradient.topHex), c.bottomHex.value_or(gradient.bottomHex),
                        c.opacity.value_or(gradient.opacity)};
    }
    case Kind::shelf: {
        const auto& shelf = std::get<Shelf>(value);
        return Shelf{c.topHex.value_or(shelf.topHex), c.bottomHex.value_or(shelf.bottomHex),
                     c.opacity.value_or(shelf.opacity)};
    }
    case Kind::glass:
        // Glass has no colour of its own to tint; a chosen colour turns it into frosted glass.
        if (c.topHex) return Frosted{*c.topHex, c.opacity.value_or(0.55)};
        return *this;
    case Kind::none:
        return *this;
    }
    return *this;
}

const DockTheme& DockTheme::native() {
    return all().front();
}

const std::vector<DockTheme>& DockTheme::all() {
    static const std::vector<DockTheme> themes = makeAllThemes();
    return themes;
}

const std::vector<DockTheme>& DockTheme::seasonal() {
    static const std::vector<DockTheme> themes = makeSeasonalThemes();
    return themes;
}

const DockTheme& DockTheme::named(std::optional<std::string_view> id) {
    if (!id) return native();
    for (const auto* list : {&all(), &seasonal()})
        for (const auto& theme : *list)
            if (theme.id == *id) return theme;
    return native();
}

DockTheme DockTheme::customized(const DockThemeCustomization& c) const {
    if (c.isEmpty()) return *this;
    DockTheme result = *this;
    result.background = background.customized(c);
    result.cornerRadiusScale = c.cornerRadiusScale.value_or(cornerRadiusScale);

    if (c.showsBorder.value_or(borderHex.has_value())) {
        result.borderHex = c.borderHex.value_or(borderHex.value_or("#FFFFFF"));
        // A border the user turned on must stay visible, whatever width the theme had.
        result.borderWidth = std::max(c.borderWidth.value_or(borderWidth), 0.5);
    } else {
        result.borderHex = std::nullopt;
        result.borderWidth = 0;
    }

    if (c.showsGlow.value_or(glowHex.has_value()))
        result.glowHex = c.glowHex.value_or(glowHex.value_or("#00E5FF"));
    else
        result.glowHex = std::nullopt;

    result.showsReflections = c.showsReflections.value_or(showsReflections);
    result.separatorHex = c.separatorHex ? c.separatorHex : separatorHex;

    if (result.decoration) {
        auto& extras = *result.decoration;
        if (c.showsSnowfall == false) extras.particles = std::nullopt;
        if (c.showsSnowCap == false) extras.edgeCover = std::nullopt;
        if (c.showsLights == false) extras.lightHexes.clear();
    }
    return result;
}

std::string_view rawValue(DockTheme::Particles particles) {
    switch (particles) {
    case DockTheme::Particles::snow:
        return "snow";
    case DockTheme::Particles::bats:
        return "bats";
    case DockTheme::Particles::fog:
        return "fog";
    case DockTheme::Particles::leaves:
        return "leaves";
    }
    return "snow";
}

std::optional<DockTheme::Particles> particlesFromRaw(std::string_view raw) {
    using P = DockTheme::Particles;
    return caseWithRawValue({P::snow, P::bats, P::fog, P::leaves}, raw);
}

std::string_view rawValue(DockTheme::EdgeCover cover) {
    switch (cover) {
    case DockTheme::EdgeCover::snow:
        return "snow";
    case DockTheme::EdgeCover::cobwebs:
        return "cobwebs";
    case DockTheme::EdgeCover::slime:
        return "slime";
    case DockTheme::EdgeCover::leaves:
        return "leaves";
    }
    return "snow";
}

std::optional<DockTheme::EdgeCover> edgeCoverFromRaw(std::string_view raw) {
    using E = DockTheme::EdgeCover;
    return caseWithRawValue({E::snow, E::cobwebs, E::slime, E::leaves}, raw);
}

std::string_view rawValue(DockTheme::Bulb bulb) {
    switch (bulb) {
    case DockTheme::Bulb::bulb:
        return "bulb";
    case DockTheme::Bulb::pumpkin:
        return "pumpkin";
    case DockTheme::Bulb::ghost:
        return "ghost";
    }
    return "bulb";
}

std::optional<DockTheme::Bulb> bulbFromRaw(std::string_view raw) {
    using B = DockTheme::Bulb;
    return caseWithRawValue({B::bulb, B::pumpkin, B::ghost}, raw);
}

} // namespace corvane
