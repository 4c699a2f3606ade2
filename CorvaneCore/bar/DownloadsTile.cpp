#include "CorvaneCore/bar/DownloadsTile.hpp"

#include "CorvaneCore/dock/DockURLString.hpp"

#include <algorithm>

namespace corvane::DownloadsTile {

std::filesystem::path folder(const ProcessEnvironment& environment) {
    auto home = environment.find("HOME");
    return std::filesystem::path(home != environment.end() ? home->second : ".") / "Downloads";
}

FileEntry entry(std::string_view downloads) {
    // Items hold plain paths (the form the Dock reader gives and the Dock writer expects).
    return FileEntry{.path = DockURLString::path(downloads), .isDirectory = true};
}

bool isDownloads(std::string_view path, std::string_view downloads) {
    return DockURLString::path(path) == DockURLString::path(downloads);
}

bool isDownloads(const DockItem& item, std::string_view downloads) {
    auto file = item.file();
    return file && isDownloads(file->path, downloads);
}

bool contains(const std::vector<DockItem>& items, std::string_view downloads) {
    return std::any_of(items.begin(), items.end(),
                       [&](const DockItem& item) { return isDownloads(item, downloads); });
}

std::vector<DockItem> adding(std::vector<DockItem> items, std::string_view downloads) {
    if (!contains(items, downloads)) items.emplace_back(entry(downloads));
    return items;
}

std::vector<DockItem> removing(std::vector<DockItem> items, std::string_view downloads) {
    std::erase_if(items, [&](const DockItem& item) { return isDownloads(item, downloads); });
    return items;
}

} // namespace corvane::DownloadsTile
