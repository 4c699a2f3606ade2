#pragma once

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace corvane {

/// Makes writing into `folder` fail for as long as it lives. Permissions do not bind the
/// superuser (test machines often run as root), so there the folder is moved away and a plain
/// file takes its place; either way nothing can be created inside it.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(std::filesystem::path folder) : folder_(std::move(folder)) {
        if (::geteuid() != 0) {
            std::filesystem::permissions(folder_, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
        } else {
            std::filesystem::rename(folder_, moved());
            std::ofstream(folder_) << "in the way";
        }
    }
    ~ReadOnlyFolder() {
        std::error_code ec;
        if (::geteuid() != 0) {
            std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, ec);
        } else {
            std::filesystem::remove(folder_, ec);
            std::filesystem::rename(moved(), folder_, ec);
        }
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    std::filesystem::path moved() const { return folder_.string() + ".moved"; }
    std::filesystem::path folder_;
};

} // namespace corvane
