#pragma once

#include "CorvaneCore/support/Date.hpp"

#include <filesystem>
#include <optional>
#include <vector>

namespace corvane {

/// The newest files of one folder, for the files and screenshots widgets. Any thread.
namespace RecentFiles {

struct Entry {
    std::filesystem::path path;
    Date modified;

    bool operator==(const Entry&) const = default;
};

enum class Filter {
    any,
    /// Pictures and screen recordings.
    screenshots,
};

/// Up to `count` files and folders directly in `folder`, newest first, hidden ones left out;
/// none when the folder cannot be read.
std::optional<std::vector<Entry>> newest(const std::filesystem::path& folder, std::size_t count,
                                         Filter filter);

} // namespace RecentFiles

} // namespace corvane
