#pragma once

#include "CorvaneCore/support/Base64.hpp"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace corvane {

struct AppEntry {
    std::string path;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> displayName;
    /// The Dock's own tile dictionary, kept so a tile read from the Dock is written back unchanged.
    std::optional<Bytes> tile;

    bool operator==(const AppEntry&) const = default;
};

struct FileEntry {
    std::string path;
    std::optional<std::string> displayName;
    bool isDirectory = false;
    std::optional<Bytes> tile;
    /// "#RRGGBB" of the badge the own Dock bar draws on a folder.
    std::optional<std::string> badgeColorHex;

    /// The palette offered for folder badges, in menu order.
    static constexpr std::array<std::string_view, 8> badgeColors = {
        "#EF4444", "#F97316", "#F59E0B", "#22C55E", "#0EA5E9", "#6366F1", "#EC4899", "#64748B"};

    std::string resolvedName() const;
    /// First letter or digit of the name, upper-cased; "•" when there is none.
    std::string badgeLetter() const;
    FileEntry withBadge(std::optional<std::string> hex) const;

    bool operator==(const FileEntry&) const = default;
};

struct URLEntry {
    std::string url;
    std::optional<std::string> displayName;
    std::optional<Bytes> tile;

    bool operator==(const URLEntry&) const = default;
};

/// The raw values are exactly the Dock's spacer tile types.
enum class SpacerVariant { small, flex, default_ };

std::string_view rawValue(SpacerVariant variant);
std::optional<SpacerVariant> spacerVariantFromRaw(std::string_view raw);
std::string_view displayName(SpacerVariant variant);

/// One tile of a workspace. The order of the cases matters: apps and spacers belong in the
/// applications section, files and links in the documents section.
struct DockItem {
    std::variant<AppEntry, SpacerVariant, FileEntry, URLEntry> value;

    DockItem(AppEntry entry) : value(std::move(entry)) {}
    DockItem(SpacerVariant variant) : value(variant) {}
    DockItem(FileEntry entry) : value(std::move(entry)) {}
    DockItem(URLEntry entry) : value(std::move(entry)) {}

    const AppEntry* app() const { return std::get_if<AppEntry>(&value); }
    const SpacerVariant* spacer() const { return std::get_if<SpacerVariant>(&value); }
    const FileEntry* file() const { return std::get_if<FileEntry>(&value); }
    const URLEntry* url() const { return std::get_if<URLEntry>(&value); }

    bool belongsInAppsSection() const { return app() || spacer(); }
    std::string displayName() const;
    /// The case's key in the workspaces file: "app", "spacer", "file" or "url".
    std::string_view caseName() const;

    bool operator==(const DockItem&) const = default;
};

} // namespace corvane
