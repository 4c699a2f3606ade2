#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The whole file, or none when there is no file at `path`. Other failures throw
/// `DataFileError` (read).
std::optional<std::string> readFileIfExists(const std::filesystem::path& path);

/// Replaces `path` with `contents` so that a reader sees the old file or the new one, never
/// half of either, even when the writer is killed halfway: a unique temporary file in the same
/// folder is written, closed and renamed over the old one. Missing folders are created. On
/// failure the temporary file is removed and `DataFileError` (write) is thrown. Temporary
/// files that a killed writer left behind for the same file are removed first. The new file
/// gets `mode` (0600 for secrets).
void writeFileAtomically(const std::filesystem::path& path, std::string_view contents, unsigned mode = 0644);

} // namespace corvane
