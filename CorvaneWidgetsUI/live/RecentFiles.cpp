#include "CorvaneWidgetsUI/live/RecentFiles.hpp"

#include "CorvaneCore/support/Text.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>

namespace corvane::RecentFiles {

namespace {

bool isScreenshot(const std::filesystem::path& path) {
    static constexpr std::array<std::string_view, 8> extensions = {".png",  ".jpg", ".jpeg", ".heic",
                                                                   ".tiff", ".gif", ".mov",  ".mp4"};
    auto extension = text::lowercased(path.extension().string());
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

// The file clock's epoch differs between libraries; going through "now" on both clocks is
// exact to well under a second, which is all a list of files needs.
Date dateOf(std::filesystem::file_time_type time) {
    auto offset = time - std::filesystem::file_time_type::clock::now();
    auto system = std::chrono::system_clock::now() +
                  std::chrono::duration_cast<std::chrono::system_clock::duration>(offset);
    return Date::fromUnixTime(std::chrono::duration<double>(system.time_since_epoch()).count());
}

} // namespace

std::optional<std::vector<Entry>> newest(const std::filesystem::path& folder, std::size_t count,
                                         Filter filter) {
    std::error_code error;
    std::filesystem::directory_iterator it(folder, error);
    if (error) return std::nullopt;
    std::vector<Entry> entries;
    for (; it != std::filesystem::directory_iterator(); it.increment(error)) {
        if (error) break;
        const auto& path = it->path();
        auto name = path.filename().string();
        if (name.empty() || name[0] == '.') continue;
        if (filter == Filter::screenshots && (!it->is_regular_file(error) || !isScreenshot(path))) continue;
        auto modified = it->last_write_time(error);
        if (error) {
            error.clear();
            continue;
        }
        entries.push_back({path, dateOf(modified)});
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return a.modified != b.modified ? a.modified > b.modified : a.path < b.path;
    });
    if (entries.size() > count) entries.resize(count);
    return entries;
}

} // namespace corvane::RecentFiles
