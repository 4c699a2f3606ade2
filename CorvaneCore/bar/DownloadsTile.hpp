#pragma once

// The Downloads folder in a workspace's documents section, added and removed as one switch.
// `downloads` is the user's Downloads folder (see `folder`); paths compare in their normalised
// form, so a trailing slash or a "file://" URL names the same folder.

#include "CorvaneCore/platform/SystemFolders.hpp"
#include "CorvaneCore/workspace/DockItem.hpp"

#include <filesystem>
#include <string_view>
#include <vector>

namespace corvane::DownloadsTile {

/// The current user's Downloads folder: "Downloads" in the home folder named by `HOME`.
std::filesystem::path folder(const ProcessEnvironment& environment);

/// A folder item for it: the normalised path, no name of its own, no tile data, no badge.
FileEntry entry(std::string_view downloads);

bool isDownloads(std::string_view path, std::string_view downloads);
/// A file item whose path is the Downloads folder.
bool isDownloads(const DockItem& item, std::string_view downloads);
bool contains(const std::vector<DockItem>& items, std::string_view downloads);
/// Appends the Downloads folder unless the items hold it already.
std::vector<DockItem> adding(std::vector<DockItem> items, std::string_view downloads);
/// Drops every Downloads item.
std::vector<DockItem> removing(std::vector<DockItem> items, std::string_view downloads);

} // namespace corvane::DownloadsTile
