#include "CorvaneCore/bar/FolderStack.hpp"

#include "CorvaneCore/support/StandardOrder.hpp"

#include <algorithm>
#include <chrono>

namespace corvane::FolderStack {

namespace {

// The earliest date there is: what an entry with no known date sorts as.
constexpr Date kDistantPast{-63114076800.0};

Date dateOf(std::filesystem::file_time_type time) {
    auto system = std::chrono::file_clock::to_sys(time);
    return Date::fromUnixTime(std::chrono::duration<double>(system.time_since_epoch()).count());
}

} // namespace

std::optional<std::vector<Entry>> listFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::directory_iterator it(folder, error);
    if (error) return std::nullopt;
    std::vector<Entry> entries;
    for (; it != std::filesystem::directory_iterator(); it.increment(error)) {
        if (error) return std::nullopt;
        const auto& path = it->path();
        if (path.filename().string().starts_with('.')) continue;
        Entry entry{.path = path};
        std::error_code ignored;
        if (auto time = it->last_write_time(ignored); !ignored) entry.creationDate = dateOf(time);
        if (auto directory = it->is_directory(ignored); !ignored) entry.isDirectory = directory;
        entries.push_back(std::move(entry));
    }
    if (error) return std::nullopt;
    return entries;
}

std::vector<StackItem> items(const std::filesystem::path& folder, StackOptions::SortOrder order,
                             const Lister& list) {
    auto entries = list(folder);
    if (!entries) return {};
    std::vector<StackItem> result;
    result.reserve(entries->size());
    for (const auto& entry : *entries) {
        auto extension = entry.path.extension().string();
        if (!extension.empty()) extension.erase(0, 1);
        result.push_back(StackItem{
            .path = entry.path.string(),
            .name = entry.localizedName.value_or(entry.path.filename().string()),
            .kind = entry.typeDescription.value_or(extension),
            .dateAdded = entry.dateAdded.value_or(entry.creationDate.value_or(kDistantPast)),
            .isDirectory = entry.isDirectory.value_or(false),
        });
    }
    return sorted(std::move(result), order);
}

std::vector<StackItem> sorted(std::vector<StackItem> items, StackOptions::SortOrder order) {
    auto byName = [](const StackItem& a, const StackItem& b) {
        return text::standardCompare(a.name, b.name) < 0;
    };
    switch (order) {
    case StackOptions::SortOrder::name:
        std::stable_sort(items.begin(), items.end(), byName);
        break;
    case StackOptions::SortOrder::kind:
        std::stable_sort(items.begin(), items.end(), [&](const StackItem& a, const StackItem& b) {
            if (auto kinds = text::standardCompare(a.kind, b.kind)) return kinds < 0;
            return byName(a, b);
        });
        break;
    case StackOptions::SortOrder::dateAdded:
        std::stable_sort(items.begin(), items.end(), [&](const StackItem& a, const StackItem& b) {
            if (a.dateAdded != b.dateAdded) return a.dateAdded > b.dateAdded;
            return byName(a, b);
        });
        break;
    }
    return items;
}

} // namespace corvane::FolderStack
