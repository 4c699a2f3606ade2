#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The whole file, or none when there is no file at `path`. Other failures throw
/// `DataFileError` (read).
std::optional<std::string> readFileIfExists(const std::filesystem::path& path);

/// What becomes of the permissions of a file that is replaced.
enum class ExistingFileMode {
    /// The new file gets the mode asked for, whatever the old one had.
    replaced,
    /// The new file keeps the old one's mode; the mode asked for serves a new file only. For files
    /// that belong to someone else, such as the Dock's preferences.
    kept,
};

/// Replaces `path` with `contents` so that a reader sees the old file or the new one, never
/// half of either, even when the writer is killed halfway: a unique temporary file in the same
/// folder is written, closed and renamed over the old one. Missing folders are created. On
/// failure the temporary file is removed and `DataFileError` (write) is thrown. Temporary
/// files that a killed writer left behind for the same file are removed first. The new file
/// gets `mode` (0600 for secrets).
void writeFileAtomically(const std::filesystem::path& path, std::string_view contents, unsigned mode = 0644,
                         ExistingFileMode existing = ExistingFileMode::replaced);

/// Removes every temporary file or folder in `folder` whose writer is no longer running, whatever
/// it was meant to become. For folders whose files are new names each time (backups), where a
/// leftover would otherwise never meet a save of its own name.
void removeAbandonedTemporaries(const std::filesystem::path& folder);

/// A new, empty temporary folder in `folder`, to be filled and then renamed into place, so that a
/// folder of several files appears whole or not at all. Until renamed it carries the temporary
/// form of `name`, which `removeAbandonedTemporaries` removes once its writer is gone. Throws
/// `DataFileError` (write).
std::filesystem::path createTemporaryFolder(const std::filesystem::path& folder, std::string_view name);

/// Moves a finished file or folder made in `folder` (see `createTemporaryFolder`) to the first
/// name of `stem` + `extension`, `stem`-001 + `extension`, … that no one holds, and returns it.
/// Claiming a name never replaces what another process published under it at the same moment.
/// Throws `DataFileError` (write).
std::filesystem::path publishUnderFreeName(const std::filesystem::path& finished, const std::filesystem::path& folder,
                                           std::string_view stem, std::string_view extension = {});

/// Whether `name` is a temporary file or folder of this writer (of any process).
bool isTemporaryName(std::string_view name);

} // namespace corvane
