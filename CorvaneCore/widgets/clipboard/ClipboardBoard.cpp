#include "CorvaneCore/widgets/clipboard/ClipboardBoard.hpp"

#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/support/Text.hpp"

#include <algorithm>
#include <unordered_set>

namespace corvane::ClipboardBoard {

namespace {

bool containsIgnoringCase(const std::optional<std::string>& haystack, const std::string& lowercasedNeedle) {
    return haystack && text::lowercased(*haystack).find(lowercasedNeedle) != std::string::npos;
}

bool matches(const ClipboardItem& item, const std::string& word) {
    if (containsIgnoringCase(item.sourceAppName, word)) return true;
    if (item.isSensitive) return false;
    if (containsIgnoringCase(item.text, word) || containsIgnoringCase(item.ogTitle, word) ||
        containsIgnoringCase(item.ogDescription, word))
        return true;
    return item.fileURL && containsIgnoringCase(DockURLString::path(*item.fileURL), word);
}

} // namespace

std::vector<ClipboardItem> order(std::vector<ClipboardItem> items) {
    std::stable_sort(items.begin(), items.end(), [](const ClipboardItem& a, const ClipboardItem& b) {
        if (a.isPinned != b.isPinned) return a.isPinned;
        return a.capturedAt > b.capturedAt;
    });
    return items;
}

std::vector<ClipboardItem> search(const std::vector<ClipboardItem>& items, std::string_view searchText) {
    std::vector<std::string> words;
    for (auto& word : text::split(text::trimmed(searchText), ' '))
        if (!text::trimmed(word).empty()) words.push_back(text::lowercased(text::trimmed(word)));
    if (words.empty()) return items;
    std::vector<ClipboardItem> found;
    for (const auto& item : items)
        if (std::all_of(words.begin(), words.end(), [&](const std::string& w) { return matches(item, w); }))
            found.push_back(item);
    return found;
}

int tileCount(const ClipboardState& state) { return static_cast<int>(state.items.size()); }

std::vector<ClipboardItem> applyRetention(std::vector<ClipboardItem> items, const ClipboardSettings& settings,
                                          Date now) {
    const auto cutOff = now - std::max(settings.retentionDays, 1) * 86400.0;
    std::erase_if(items, [&](const ClipboardItem& item) { return !item.isPinned && item.capturedAt < cutOff; });
    items = order(std::move(items));
    const auto limit = static_cast<std::size_t>(std::max(settings.historyLimit, 1));
    // Display order puts the oldest unpinned items last.
    for (auto index = items.size(); index > 0 && items.size() > limit; --index)
        if (!items[index - 1].isPinned) items.erase(items.begin() + static_cast<std::ptrdiff_t>(index - 1));
    return items;
}

std::vector<ClipboardItem> insert(std::vector<ClipboardItem> items, ClipboardItem item) {
    auto earlier = std::find_if(items.begin(), items.end(),
                                [&](const ClipboardItem& other) { return other.hasSameContent(item); });
    if (earlier != items.end()) {
        auto moved = std::move(*earlier);
        items.erase(earlier);
        moved.capturedAt = item.capturedAt;
        moved.sourceAppBundleID = std::move(item.sourceAppBundleID);
        moved.sourceAppName = std::move(item.sourceAppName);
        item = std::move(moved);
    }
    items.insert(items.begin(), std::move(item));
    return order(std::move(items));
}

std::vector<ClipboardItem> merge(std::vector<ClipboardItem> memory, const std::vector<ClipboardItem>& stored) {
    std::unordered_set<Uuid> known;
    for (const auto& item : memory) known.insert(item.id);
    for (const auto& item : stored)
        if (!known.contains(item.id)) memory.push_back(item);
    return order(std::move(memory));
}

std::optional<ClipboardPanelMessage> panelMessage(const ClipboardState& state, std::string_view searchText) {
    if (!state.hasRead) return ClipboardPanelMessage{"Loading clipboard\u2026", std::nullopt};
    if (state.items.empty())
        return ClipboardPanelMessage{"Nothing copied yet", "Copy something on your Mac and it will show up here."};
    if (search(state.items, searchText).empty()) return ClipboardPanelMessage{"Try a different word.", std::nullopt};
    return std::nullopt;
}

} // namespace corvane::ClipboardBoard
