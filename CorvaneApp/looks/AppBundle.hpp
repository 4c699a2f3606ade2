#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace corvane {

/// What the icon choices need to know of an application bundle.
struct AppBundle {
    /// From "Contents/Info.plist"; none when the bundle has none or cannot be read.
    std::optional<std::string> bundleIdentifier;
    /// The bundle's file name without ".app": what the Finder shows, and what packs name files by.
    std::string name;
    /// "CFBundleName", where the bundle has one that is not blank.
    std::optional<std::string> bundleName;

    static AppBundle read(const std::filesystem::path& path);
};

} // namespace corvane
