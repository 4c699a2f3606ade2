#include "CorvaneCore/bar/TrashFolders.hpp"

#include <string>

namespace corvane::TrashFolders {

std::filesystem::path home(const ProcessEnvironment& environment) {
    auto found = environment.find("HOME");
    return std::filesystem::path(found != environment.end() ? found->second : ".") / ".Trash";
}

std::vector<std::filesystem::path> all(const std::filesystem::path& homeTrash, const MountedVolumes& volumes,
                                       unsigned uid) {
    std::vector<std::filesystem::path> folders{homeTrash};
    for (const auto& volume : volumes.volumes())
        if (!volume.isReadOnly) folders.push_back(volume.path / ".Trashes" / std::to_string(uid));
    return folders;
}

bool isFull(const std::vector<std::filesystem::path>& folders) {
    for (const auto& folder : folders) {
        std::error_code error;
        std::filesystem::directory_iterator entries(folder, error);
        if (!error && entries != std::filesystem::directory_iterator()) return true;
    }
    return false;
}

} // namespace corvane::TrashFolders
