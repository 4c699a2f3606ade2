#pragma once

#include "CorvaneCore/looks/WidgetStyle.hpp"

#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane {

/// An icon pack could not be read from disk.
class IconPackError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A folder of PNG images that replace application icons on the own bar, matched to
/// applications by file name or by the pack's manifest.
struct IconPack {
    static constexpr std::string_view manifestFileName = "pack.json";
    static constexpr std::array<std::string_view, 1> imageExtensions = {"png"};
    /// Widget-style assets live here; nothing below it is an application icon.
    static constexpr std::string_view widgetFolderName = "_widget";
    static constexpr double maximumPadding = 0.4;

    /// The pack folder's name.
    std::string id;
    std::string name;
    std::optional<std::string> author;
    /// Share of the icon canvas left empty on each side, 0…0.4.
    double padding = 0;
    std::optional<std::string> version;
    /// Matching key → image file.
    std::map<std::string, std::filesystem::path> icons;
    std::optional<WidgetStyle> widgetStyle;

    /// The matching key of a bundle identifier, an application name or a file name: lower case,
    /// a trailing ".app" dropped, letters and digits only ("Visual Studio Code.app" and
    /// "visual-studio-code" both give "visualstudiocode").
    static std::string key(std::string_view name);

    /// Reads the pack in `folder`. A missing or broken manifest leaves the pack to its file
    /// names. Throws `IconPackError` when the folder cannot be read.
    static IconPack load(const std::filesystem::path& folder);
    /// The same with `manifest` read as the manifest's bytes, whatever the folder holds under
    /// that name; icons and images the manifest names are still looked up in `folder`. Any
    /// bytes are safe: ones that are no JSON object count as no manifest.
    static IconPack load(const std::filesystem::path& folder, std::string_view manifest);

    /// How an application's icon was found.
    enum class Match { bundleIdentifier, name, bundleIdentifierLastPart };
    struct Found {
        std::filesystem::path file;
        Match match;
        std::string key;
    };
    /// The pack's image for an application: by bundle identifier, then by name, then by the
    /// bundle identifier's last part when that has at least three characters.
    std::optional<Found> find(std::optional<std::string_view> bundleIdentifier,
                              std::string_view appName) const;
    std::optional<std::filesystem::path> iconURL(std::optional<std::string_view> bundleIdentifier,
                                                 std::string_view appName) const;

    bool operator==(const IconPack&) const = default;
};

std::string_view describe(IconPack::Match match);

} // namespace corvane
