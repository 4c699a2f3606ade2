#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace corvane {

/// Where the application's data folder is, and the name of every file in it.
namespace StoragePath {

inline constexpr std::string_view appSupportDirectoryName = "Corvane";
inline constexpr std::string_view profilesFileName = "profiles.json";
inline constexpr std::string_view backupsDirectoryName = "backups";
inline constexpr std::string_view widgetsFileName = "widgets.json";
inline constexpr std::string_view coloursFileName = "colours.json";
inline constexpr std::string_view clipboardFileName = "clipboard.json.enc";
inline constexpr std::string_view emojiFileName = "emoji.json";
inline constexpr std::string_view waterFileName = "water.json";
inline constexpr std::string_view legacyCollectionsFileName = "collections.json";
/// What the last `usage` scan read of the transcripts; deleting it changes no answer.
inline constexpr std::string_view usageCacheFileName = "claude-usage.cache";
inline constexpr std::string_view directoryOverrideVariable = "CORVANE_APP_SUPPORT_DIR";
inline constexpr std::string_view folderNameInfoKey = "CorvaneDataFolder";

using Environment = std::map<std::string, std::string>;
/// A bundle's information dictionary: only text values matter here.
using InfoValue = std::variant<std::monostate, bool, double, std::string>;
using InfoDictionary = std::map<std::string, InfoValue>;

/// The data folder: the override variable when it holds more than white space (a leading "~"
/// is the home folder from `HOME`), else `applicationSupport` + the bundle's folder name.
std::filesystem::path resolvedDirectory(const Environment& environment, const InfoDictionary& info,
                                        const std::filesystem::path& applicationSupport);

/// Creates the folder and its parents; an existing folder is fine. Throws `DataFileError`.
void createDirectory(const std::filesystem::path& directory);

inline std::filesystem::path profilesFileURL(const std::filesystem::path& dir) { return dir / profilesFileName; }
inline std::filesystem::path widgetsFileURL(const std::filesystem::path& dir) { return dir / widgetsFileName; }
inline std::filesystem::path coloursFileURL(const std::filesystem::path& dir) { return dir / coloursFileName; }
inline std::filesystem::path clipboardFileURL(const std::filesystem::path& dir) { return dir / clipboardFileName; }
inline std::filesystem::path emojiFileURL(const std::filesystem::path& dir) { return dir / emojiFileName; }
inline std::filesystem::path waterFileURL(const std::filesystem::path& dir) { return dir / waterFileName; }
inline std::filesystem::path legacyCollectionsFileURL(const std::filesystem::path& dir) {
    return dir / legacyCollectionsFileName;
}
inline std::filesystem::path usageCacheFileURL(const std::filesystem::path& dir) { return dir / usageCacheFileName; }
inline std::filesystem::path backupsDirectory(const std::filesystem::path& dir) { return dir / backupsDirectoryName; }

inline constexpr std::string_view iconChoicesFileName = "icons.json";
inline constexpr std::string_view iconPacksDirectoryName = "IconPacks";
inline constexpr std::string_view customIconsDirectoryName = "CustomIcons";
inline std::filesystem::path iconChoicesFileURL(const std::filesystem::path& dir) { return dir / iconChoicesFileName; }
inline std::filesystem::path iconPacksDirectory(const std::filesystem::path& dir) { return dir / iconPacksDirectoryName; }
inline std::filesystem::path customIconsDirectory(const std::filesystem::path& dir) {
    return dir / customIconsDirectoryName;
}

} // namespace StoragePath

} // namespace corvane
