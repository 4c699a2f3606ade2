#pragma once

#include "CorvaneCore/platform/SystemFolders.hpp"
#include "CorvaneCore/workspace/DockItem.hpp"

#include <functional>
#include <vector>

namespace corvane {

/// Adds the own bar's Downloads tile to a workspace's documents: the user's Downloads folder
/// appended once, never a second time. What the application state's `addingDownloadsTile`
/// service does.
using DownloadsTileAdding = std::function<std::vector<DockItem>(const std::vector<DockItem>& others)>;

/// For the user whose home folder `environment` names; the folder is found once, here.
DownloadsTileAdding downloadsTileAdding(const ProcessEnvironment& environment);

} // namespace corvane
