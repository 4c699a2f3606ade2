#pragma once

#include "CorvaneCore/platform/MountedVolumes.hpp"
#include "CorvaneCore/platform/SystemFolders.hpp"

#include <filesystem>
#include <vector>

namespace corvane::TrashFolders {

/// ".Trash" in the home folder named by `HOME`.
std::filesystem::path home(const ProcessEnvironment& environment);

/// The home trash first, then ".Trashes/<uid>" on every writable mounted volume.
std::vector<std::filesystem::path> all(const std::filesystem::path& homeTrash, const MountedVolumes& volumes,
                                       unsigned uid);

/// Whether any of the folders holds anything; missing or unreadable folders count as empty.
bool isFull(const std::vector<std::filesystem::path>& folders);

} // namespace corvane::TrashFolders
