#include "CorvaneCore/looks/DockTheme.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace corvane {

namespace {

using Background = DockTheme::Background;
using Decoration = DockTheme::Decoration;

// Each builder leaves the optional parts unset so the tables below read as their rows.
DockTheme theme(std::string id, std::string name, Background background, double cornerRadiusScale) {
    DockTheme made;
    made.id = std::move(id);
    made.name = std::move(name);
    made.background = std::move(background);
    made.cornerRadiusScale = cornerRadiusScale;
    return made;
}

DockTheme bordered(DockTheme base, std::string hex, double width) {
    base.borderHex = std::move(hex);
    base.borderWidth = width;
    return base;
}

DockTheme colored(DockTheme base, std::optional<std::string> indicator, std::optional<std::string> separator) {
    base.indicatorHex = std::move(indicator);
    base.separatorHex = std::move(separator);
    return base;
}

DockTheme glowing(DockTheme base, std::string hex) {
    base.glowHex = std::move(hex);
    return base;
}

DockTheme reflecting(DockTheme base) {
    base.showsReflections = true;
    return base;
}

DockTheme decorated(DockTheme base, Decoration decoration) {
    base.decoration = std::move(decoration);
    return base;
}

std::vector<DockTheme> makeAllThemes() {
    return {
        theme("native", "Native", Background::Glass{}, 0.4),
        theme("liquid", "Liquid Glass", Background::Liquid{std::nullopt, 0.25}, 0.5),
        colored(bordered(theme("midnight", "Midnight", Background::Frosted{"#0B1020", 0.55}, 0.4), "#FFFFFF", 0.5),
                std::nullopt, "#FFFFFF"),
        reflecting(glowing(
            colored(bordered(theme("rocket", "Rocket", Background::Gradient{"#3A3F4B", "#0E1014", 0.82}, 0.18),
                             "#8FB6FF", 1.0),
                    "#7FB2FF", "#8FB6FF"),
            "#4C8DFF")),
        reflecting(colored(
            bordered(theme("aqua", "Aqua Shelf", Background::Shelf{"#F2F5FA", "#A9B4C2", 0.72}, 0.08), "#FFFFFF", 1.0),
            "#5AC8FA", "#6B7280")),
        glowing(colored(bordered(theme("neon", "Neon", Background::Gradient{"#0A0A12", "#000000", 0.88}, 0.5),
                                 "#FF2BD6", 1.5),
                        "#00E5FF", "#FF2BD6"),
                "#00E5FF"),
        colored(bordered(theme("canarinho", "Canarinho", Background::Gradient{"#FFDF00", "#009C3B", 0.85}, 0.45),
                         "#002776", 1.5),
                "#002776", "#002776"),
        colored(bordered(theme("paper", "Paper", Background::Gradient{"#FFFFFF", "#F1F1EE", 0.96}, 0.3), "#D4D4D0",
                         1.0),
                "#3F3F46", "#A1A1AA"),
        reflecting(theme("floating", "Floating", Background::None{}, 0.4)),
    };
}

std::vector<DockTheme> makeSeasonalThemes() {
    using P = DockTheme::Particles;
    using E = DockTheme::EdgeCover;
    using B = DockTheme::Bulb;
    using Outline = DockTheme::Outline;
    return {
        decorated(colored(bordered(theme("halloween", "Halloween", Background::Gradient{"#3B1A55", "#12081B", 0.92},
                                         0.3),
                                   "#FF8A1F", 1.0),
                          "#FF7A00", "#FF8A1F"),
                  Decoration{P::bats, E::cobwebs, {"#FF7A00", "#FF9A1F", "#FFB347"}, B::pumpkin, std::nullopt}),
        decorated(colored(bordered(theme("haunted-night", "Haunted Night",
                                         Background::Gradient{"#18302F", "#060E0F", 0.82}, 0.4),
                                   "#A8FFB8", 1.0),
                          "#A8FFB8", "#A8FFB8"),
                  Decoration{P::fog, E::slime, {"#B8FF9E", "#D2B8FF"}, B::ghost, std::nullopt}),
        decorated(colored(theme("candy-corn", "Candy Corn", Background::Gradient{"#FFF8EC", "#F5E5CC", 0.95}, 0.35),
                          "#E8650F", "#E8650F"),
                  Decoration{P::leaves, E::leaves, {"#F07C1A", "#8A4FB8", "#F07C1A", "#FFD23F"}, B::pumpkin,
                             Outline::candies()}),
        decorated(colored(bordered(theme("christmas", "Christmas", Background::Gradient{"#1F5C3F", "#0B2B1D", 0.92},
                                         0.3),
                                   "#F2D27A", 1.0),
                          "#FF4B4B", "#F2D27A"),
                  Decoration{P::snow, E::snow, {"#FF3B30", "#FFD60A", "#34C759", "#0A84FF"}, B::bulb, std::nullopt}),
        decorated(colored(bordered(theme("snowy-night", "Snowy Night",
                                         Background::Gradient{"#1B2A4A", "#0A1226", 0.8}, 0.4),
                                   "#CFE3FF", 1.0),
                          "#CFE3FF", "#CFE3FF"),
                  Decoration{P::snow, E::snow, {"#FFF4D6", "#FFE8A3"}, B::bulb, std::nullopt}),
        decorated(colored(theme("candy-cane", "Candy Cane", Background::Gradient{"#FFFFFF", "#F3E9E9", 0.95}, 0.35),
                          "#D7263D", "#D7263D"),
                  Decoration{P::snow, E::snow, {"#D7263D", "#1E8E3E", "#D7263D", "#FFD60A"}, B::bulb,
                             Outline::stripes("#D7263D")}),
    };
}

template <typename Enum, std::size_t N>
std::optional<Enum> fromRaw(const std::array<Enum, N>& cases, std::string_view raw) {
    for (auto value : cases)
        if (rawValue(value) == raw) return value;
    return std::nullopt;
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
    case Kind::none: return std::nullopt;
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
    case Kind::none: return *this;
    }
    return *this;
}

const DockTheme& DockTheme::native() { return all().front(); }

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
    case DockTheme::Particles::snow: return "snow";
    case DockTheme::Particles::bats: return "bats";
    case DockTheme::Particles::fog: return "fog";
    case DockTheme::Particles::leaves: return "leaves";
    }
    return "snow";
}

std::optional<DockTheme::Particles> particlesFromRaw(std::string_view raw) {
    using P = DockTheme::Particles;
    return fromRaw(std::array{P::snow, P::bats, P::fog, P::leaves}, raw);
}

std::string_view rawValue(DockTheme::EdgeCover cover) {
    switch (cover) {
    case DockTheme::EdgeCover::snow: return "snow";
    case DockTheme::EdgeCover::cobwebs: return "cobwebs";
    case DockTheme::EdgeCover::slime: return "slime";
    case DockTheme::EdgeCover::leaves: return "leaves";
    }
    return "snow";
}

std::optional<DockTheme::EdgeCover> edgeCoverFromRaw(std::string_view raw) {
    using E = DockTheme::EdgeCover;
    return fromRaw(std::array{E::snow, E::cobwebs, E::slime, E::leaves}, raw);
}

std::string_view rawValue(DockTheme::Bulb bulb) {
    switch (bulb) {
    case DockTheme::Bulb::bulb: return "bulb";
    case DockTheme::Bulb::pumpkin: return "pumpkin";
    case DockTheme::Bulb::ghost: return "ghost";
    }
    return "bulb";
}

std::optional<DockTheme::Bulb> bulbFromRaw(std::string_view raw) {
    using B = DockTheme::Bulb;
    return fromRaw(std::array{B::bulb, B::pumpkin, B::ghost}, raw);
}

} // namespace corvane
