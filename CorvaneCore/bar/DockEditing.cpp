#include "CorvaneCore/bar/DockEditing.hpp"

#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <algorithm>
#include <array>
#include <charconv>

namespace corvane::DockEditing {

namespace {

// Splits at '-' into at most three parts, dropping empty parts; empty parts do not count as
// splits, so "pinned--3-/a" still reads as ["pinned", "3", "/a"].
std::vector<std::string_view> idParts(std::string_view id) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i < id.size() && parts.size() < 2; ++i) {
        if (id[i] != '-') continue;
        if (i > start) parts.push_back(id.substr(start, i - start));
        start = i + 1;
    }
    if (start < id.size()) parts.push_back(id.substr(start));
    return parts;
}

std::optional<std::size_t> decimal(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    std::size_t value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<std::size_t> storedIndex(std::string_view tileID, const std::vector<DockItem>& items) {
    auto index = pinnedIndex(tileID);
    if (!index || *index >= items.size()) return std::nullopt;
    return index;
}

const DockTileModel* findTile(std::string_view tileID, const WorkspaceDockLayout& layout) {
    auto it = std::find_if(layout.apps.begin(), layout.apps.end(),
                           [&](const DockTileModel& tile) { return tile.id == tileID; });
    return it == layout.apps.end() ? nullptr : &*it;
}

/// The stored items in the order of `tiles`. The tile being moved, when it is an unpinned
/// running app, becomes a new item; items no tile names go back near their old places.
std::vector<DockItem> itemsFrom(const std::vector<DockTileModel>& tiles, std::string_view pinning,
                                const Profile& profile) {
    const auto& items = profile.items;
    std::vector<DockItem> result;
    std::vector<bool> named(items.size());
    for (const auto& tile : tiles) {
        if (auto index = storedIndex(tile.id, items)) {
            if (named[*index]) continue;
            named[*index] = true;
            result.push_back(items[*index]);
            continue;
        }
        if (tile.id != pinning || tile.id == WorkspaceDockLayout::ownTileID) continue;
        auto app = tile.app();
        if (!app || app->entry || !app->running || !app->running->path) continue;
        const auto& running = *app->running;
        result.push_back(
            AppEntry{DockURLString::path(*running.path), running.bundleIdentifier, running.name, {}});
    }
    // Nothing stored is lost by an edit: the Finder's own item, and stack members folded into
    // their stack's tile, have no tile of their own.
    for (std::size_t i = 0; i < items.size(); ++i)
        if (!named[i])
            result.insert(result.begin() + static_cast<std::ptrdiff_t>(std::min(result.size(), i)), items[i]);
    return result;
}

} // namespace

std::optional<std::size_t> pinnedIndex(std::string_view tileID) {
    static constexpr std::array<std::string_view, 4> kinds = {"pinned", "spacer", "widget", "stack"};
    auto parts = idParts(tileID);
    if (parts.size() < 2 || std::find(kinds.begin(), kinds.end(), parts[0]) == kinds.end())
        return std::nullopt;
    return decimal(parts[1]);
}

std::optional<std::size_t> pinnedIndex(const DockTileModel& tile) {
    return pinnedIndex(tile.id);
}

bool isRemovable(const DockTileModel& tile) {
    return pinnedIndex(tile).has_value();
}

std::vector<DockItem> itemsAfterRemoving(std::string_view tileID, const WorkspaceDockLayout& layout,
                                         const Profile& profile) {
    auto items = profile.items;
    auto tile = findTile(tileID, layout);
    if (!tile) return items;
    if (auto index = storedIndex(tile->id, items))
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(*index));
    return items;
}

std::vector<DockItem> itemsAfterMoving(std::string_view tileID, std::ptrdiff_t to,
                                       const WorkspaceDockLayout& layout, const Profile& profile) {
    auto found = std::find_if(layout.apps.begin(), layout.apps.end(),
                              [&](const DockTileModel& tile) { return tile.id == tileID; });
    if (found == layout.apps.end() || found->id == "finder") return profile.items;
    auto from = found - layout.apps.begin();
    auto tiles = layout.apps;
    auto moved = std::move(tiles[static_cast<std::size_t>(from)]);
    tiles.erase(tiles.begin() + from);
    auto destination = from < to ? to - 1 : to;
    destination = std::min<std::ptrdiff_t>(std::max<std::ptrdiff_t>(destination, 1),
                                           static_cast<std::ptrdiff_t>(tiles.size()));
    tiles.insert(tiles.begin() + destination, std::move(moved));
    return itemsFrom(tiles, tileID, profile);
}

std::vector<DockItem> itemsAfterInserting(const std::vector<AppEntry>& entries, std::ptrdiff_t at,
                                          const WorkspaceDockLayout& layout, const Profile& profile) {
    auto items = profile.items;
    auto before = std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(at, 0)), layout.apps.size());
    std::size_t point = 0;
    for (std::size_t t = 0; t < before; ++t)
        if (auto index = pinnedIndex(layout.apps[t])) point = std::max(point, *index + 1);
    point = std::min(point, items.size());
    for (const auto& entry : entries) {
        bool pinned = std::any_of(items.begin(), items.end(), [&](const DockItem& item) {
            auto app = item.app();
            return app && (app->path == entry.path ||
                           (entry.bundleIdentifier && app->bundleIdentifier == entry.bundleIdentifier));
        });
        if (pinned) continue;
        items.insert(items.begin() + static_cast<std::ptrdiff_t>(point), entry);
        ++point;
    }
    return items;
}

std::vector<DockItem> gathering(const std::vector<std::string>& members, const std::vector<DockItem>& items) {
    auto memberRank = [&](const DockItem& item) -> std::optional<std::size_t> {
        auto app = item.app();
        if (!app || !app->bundleIdentifier) return std::nullopt;
        auto it = std::find(members.begin(), members.end(), *app->bundleIdentifier);
        if (it == members.end()) return std::nullopt;
        return static_cast<std::size_t>(it - members.begin());
    };
    std::vector<bool> present(members.size());
    std::optional<std::size_t> start;
    std::vector<DockItem> rest;
    std::vector<std::pair<std::size_t, DockItem>> gathered;
    for (const auto& item : items) {
        if (auto rank = memberRank(item)) {
            present[*rank] = true;
            if (!start) start = rest.size();
            gathered.emplace_back(*rank, item);
        } else {
            rest.push_back(item);
        }
    }
    if (std::count(present.begin(), present.end(), true) < 2) return items;
    std::stable_sort(gathered.begin(), gathered.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<DockItem> block;
    for (auto& [rank, item] : gathered)
        block.push_back(std::move(item));
    rest.insert(rest.begin() + static_cast<std::ptrdiff_t>(*start), block.begin(), block.end());
    return rest;
}

} // namespace corvane::DockEditing
