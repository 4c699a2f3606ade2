#pragma once

#include "CorvaneCore/looks/DockThemeCustomization.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvane {

/// The look of the own Dock bar: pure data that the bar's renderer draws.
struct DockTheme {
    /// What is drawn behind the tiles.
    struct Background {
        enum class Kind { liquid, frosted, gradient, shelf, glass, none };

        struct Liquid {
            std::optional<std::string> tintHex;
            double opacity = 0;
            bool operator==(const Liquid&) const = default;
        };
        struct Frosted {
            std::string tintHex;
            double opacity = 0;
            bool operator==(const Frosted&) const = default;
        };
        /// A vertical gradient.
        struct Gradient {
            std::string topHex;
            std::string bottomHex;
            double opacity = 0;
            bool operator==(const Gradient&) const = default;
        };
        struct Shelf {
            std::string topHex;
            std::string bottomHex;
            double opacity = 0;
            bool operator==(const Shelf&) const = default;
        };
        struct Glass {
            bool operator==(const Glass&) const = default;
        };
        /// Nothing behind the icons.
        struct None {
            bool operator==(const None&) const = default;
        };

        /// The colours a renderer fills with; `bottomHex` is absent for a single tint.
        struct Colors {
            std::string topHex;
            std::optional<std::string> bottomHex;
            double opacity = 0;
            bool operator==(const Colors&) const = default;
        };

        std::variant<Liquid, Frosted, Gradient, Shelf, Glass, None> value;

        Background(Liquid liquid) : value(std::move(liquid)) {}
        Background(Frosted frosted) : value(std::move(frosted)) {}
        Background(Gradient gradient) : value(std::move(gradient)) {}
        Background(Shelf shelf) : value(std::move(shelf)) {}
        Background(Glass glass) : value(glass) {}
        Background(None none) : value(none) {}

        Kind kind() const { return static_cast<Kind>(value.index()); }
        /// None for an untinted liquid, for glass and for no background.
        std::optional<Colors> colors() const;
        Background customized(const DockThemeCustomization& customization) const;

        bool operator==(const Background&) const = default;
    };

    enum class Particles { snow, bats, fog, leaves };
    enum class EdgeCover { snow, cobwebs, slime, leaves };
    enum class Bulb { bulb, pumpkin, ghost };

    struct Outline {
        enum class Kind { stripes, candies };
        Kind kind = Kind::candies;
        /// The stripes' colour; none for candies.
        std::optional<std::string> hex;

        static Outline stripes(std::string hex) { return {Kind::stripes, std::move(hex)}; }
        static Outline candies() { return {Kind::candies, std::nullopt}; }

        bool operator==(const Outline&) const = default;
    };

    /// A seasonal theme's extras.
    struct Decoration {
        std::optional<Particles> particles;
        std::optional<EdgeCover> edgeCover;
        /// Bulb colours of the string of lights, used in turn; empty means no lights.
        std::vector<std::string> lightHexes;
        Bulb bulb = Bulb::bulb;
        std::optional<Outline> outline;

        bool operator==(const Decoration&) const = default;
    };

    std::string id;
    std::string name;
    Background background = Background::Glass{};
    /// Corner radius as a share of the tile size.
    double cornerRadiusScale = 0.4;
    std::optional<std::string> borderHex;
    double borderWidth = 0;
    std::optional<std::string> glowHex;
    bool showsReflections = false;
    /// None draws the system's default indicator colour.
    std::optional<std::string> indicatorHex;
    /// None draws the system's default separator colour.
    std::optional<std::string> separatorHex;
    std::optional<Decoration> decoration;

    static const DockTheme& native();
    /// The everyday themes, `native` first.
    static const std::vector<DockTheme>& all();
    static const std::vector<DockTheme>& seasonal();
    /// The theme with exactly this id in `all`, then `seasonal`; `native` otherwise, so a stored id
    /// of a theme that no longer ships still draws a bar.
    static const DockTheme& named(std::optional<std::string_view> id);

    /// The theme with the user's overrides; id, name and indicator colour are kept.
    DockTheme customized(const DockThemeCustomization& customization) const;

    bool operator==(const DockTheme&) const = default;
};

std::string_view rawValue(DockTheme::Particles particles);
std::optional<DockTheme::Particles> particlesFromRaw(std::string_view raw);
std::string_view rawValue(DockTheme::EdgeCover cover);
std::optional<DockTheme::EdgeCover> edgeCoverFromRaw(std::string_view raw);
std::string_view rawValue(DockTheme::Bulb bulb);
std::optional<DockTheme::Bulb> bulbFromRaw(std::string_view raw);

} // namespace corvane
