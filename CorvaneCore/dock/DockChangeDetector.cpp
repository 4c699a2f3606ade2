#include "CorvaneCore/dock/DockChangeDetector.hpp"

#include "CorvaneCore/dock/DockURLString.hpp"

#include <map>
#include <set>

namespace corvane::DockChangeDetector {

namespace {

// The kind is the tile the Dock will store, not the item's case: a file placed among the
// applications comes back from the Dock as an application and an application among the
// documents as a file, so comparing cases would report a swap that worked as failed.
std::string itemKey(const DockItem& item, bool inAppsSection) {
    std::string key = inAppsSection ? "apps:" : "others:";
    if (auto app = item.app()) return key + (inAppsSection ? "app:" : "file:") + DockURLString::normalize(app->path);
    if (auto file = item.file()) {
        const char* kind = file->isDirectory ? "folder:" : (inAppsSection ? "app:" : "file:");
        return key + kind + DockURLString::normalize(file->path);
    }
    if (auto link = item.url()) return key + "url:" + link->url;
    return key + "spacer:" + std::string(rawValue(*item.spacer()));
}

std::vector<std::string> commonInOrder(const std::vector<std::string>& keys, const std::set<std::string>& other) {
    std::vector<std::string> common;
    for (const auto& key : keys)
        if (other.contains(key)) common.push_back(key);
    return common;
}

} // namespace

std::vector<std::string> keys(const DockSnapshot& snapshot) {
    std::vector<std::string> result;
    std::map<std::string, int> seen;
    auto add = [&](const std::vector<DockItem>& items, bool inAppsSection) {
        for (const auto& item : items) {
            auto key = itemKey(item, inAppsSection);
            result.push_back(key + "#" + std::to_string(++seen[key]));
        }
    };
    add(snapshot.apps, true);
    add(snapshot.others, false);
    return result;
}

Report diff(const DockSnapshot& previous, const DockSnapshot& current) {
    const auto previousKeys = keys(previous), currentKeys = keys(current);
    const std::set<std::string> previousSet(previousKeys.begin(), previousKeys.end());
    const std::set<std::string> currentSet(currentKeys.begin(), currentKeys.end());
    const auto previousItems = previous.allItems(), currentItems = current.allItems();

    Report report;
    for (std::size_t i = 0; i < currentKeys.size(); ++i)
        if (!previousSet.contains(currentKeys[i])) report.added.push_back(currentItems[i]);
    for (std::size_t i = 0; i < previousKeys.size(); ++i)
        if (!currentSet.contains(previousKeys[i])) report.removed.push_back(previousItems[i]);
    report.reordered = commonInOrder(previousKeys, currentSet) != commonInOrder(currentKeys, previousSet);
    return report;
}

} // namespace corvane::DockChangeDetector
