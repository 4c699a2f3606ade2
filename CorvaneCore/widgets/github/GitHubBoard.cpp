#include "CorvaneCore/widgets/github/GitHubBoard.hpp"

#include <algorithm>
#include <set>

namespace corvane::GitHubBoard {

std::vector<GitHubItem> select(std::vector<GitHubItem> items, const GitHubSettings& settings) {
    if (!settings.includesDrafts) std::erase_if(items, [](const GitHubItem& item) { return item.isDraft; });
    std::set<std::string> seen;
    std::erase_if(items, [&](const GitHubItem& item) { return !seen.insert(item.key()).second; });
    std::sort(items.begin(), items.end(), [](const GitHubItem& a, const GitHubItem& b) {
        if (a.checks != b.checks) return a.checks < b.checks;
        if (a.updatedAt != b.updatedAt) return a.updatedAt > b.updatedAt;
        return a.key() < b.key();
    });
    auto limit = static_cast<std::size_t>(std::max(settings.limit, 1));
    if (items.size() > limit) items.resize(limit);
    return items;
}

GitHubChecks worstChecks(const std::vector<GitHubItem>& items) {
    auto worst = GitHubChecks::none;
    for (const auto& item : items)
        worst = std::min(worst, item.checks);
    return worst;
}

std::int64_t failing(const std::vector<GitHubItem>& items) {
    return std::count_if(items.begin(), items.end(),
                         [](const GitHubItem& item) { return item.checks == GitHubChecks::failing; });
}

std::optional<std::string> failingLine(const std::vector<GitHubItem>& items) {
    auto first = std::find_if(items.begin(), items.end(),
                              [](const GitHubItem& item) { return item.checks == GitHubChecks::failing; });
    if (first == items.end()) return std::nullopt;
    return std::to_string(failing(items)) + " failing · " + first->repository + " #" +
           std::to_string(first->number);
}

} // namespace corvane::GitHubBoard
