#include "CorvaneCore/widgets/github/GitHubReply.hpp"

#include "CorvaneCore/looks/LenientJson.hpp"
#include "CorvaneCore/support/Iso8601.hpp"

#include <limits>

namespace corvane::GitHubReply {

namespace {

using nlohmann::json;

// Whole numbers that fit; a fraction or a number past 2^63 is not a count or an issue number.
std::optional<std::int64_t> integer(const json* value) {
    if (!value) return std::nullopt;
    if (value->is_number_integer() && !value->is_number_unsigned()) return value->get<std::int64_t>();
    if (value->is_number_unsigned()) {
        auto number = value->get<std::uint64_t>();
        if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return std::nullopt;
        return static_cast<std::int64_t>(number);
    }
    return std::nullopt;
}

const json* path(const json& object, std::initializer_list<std::string_view> keys) {
    const json* current = &object;
    for (auto key : keys)
        if (!(current = lenient::value(*current, key))) return nullptr;
    return current;
}

std::optional<std::string> firstError(const json& reply) {
    auto errors = lenient::value(reply, "errors");
    if (!errors) return std::nullopt;
    if (errors->is_array() && errors->empty()) return std::nullopt;
    if (errors->is_array())
        for (const auto& error : *errors)
            if (auto message = lenient::string(error, "message"); message && !message->empty())
                return message;
    return "GitHub answered with an error";
}

GitHubChecks checks(const json& node) {
    auto commits = path(node, {"commits", "nodes"});
    if (!commits || !commits->is_array() || commits->empty()) return GitHubChecks::none;
    auto state = path(commits->back(), {"commit", "statusCheckRollup", "state"});
    if (!state || !state->is_string()) return GitHubChecks::none;
    const auto& text = state->get_ref<const std::string&>();
    if (text == "SUCCESS") return GitHubChecks::passing;
    if (text == "FAILURE" || text == "ERROR") return GitHubChecks::failing;
    if (text == "PENDING" || text == "EXPECTED") return GitHubChecks::running;
    return GitHubChecks::none;
}

std::optional<GitHubItem> item(const json& node) {
    auto number = integer(lenient::value(node, "number"));
    auto repository = path(node, {"repository", "nameWithOwner"});
    if (!number || !repository || !repository->is_string()) return std::nullopt;
    GitHubItem result;
    result.number = *number;
    result.repository = repository->get<std::string>();
    result.title = lenient::string(node, "title").value_or("");
    result.url = lenient::string(node, "url").value_or("");
    result.isIssue = lenient::string(node, "__typename") == "Issue";
    result.isDraft = lenient::boolean(node, "isDraft").value_or(false);
    if (auto updated = lenient::string(node, "updatedAt"))
        if (auto date = parseIso8601(*updated)) result.updatedAt = *date;
    result.checks = result.isIssue ? GitHubChecks::none : checks(node);
    return result;
}

} // namespace

Items items(std::string_view data) {
    auto reply = lenient::document(data);
    if (!reply || !reply->is_object()) return {{}, std::string(unreadable)};
    if (auto error = firstError(*reply)) return {{}, error};
    auto searches = lenient::value(*reply, "data");
    if (!searches || !searches->is_object()) return {{}, std::string(unreadable)};
    Items result;
    for (const auto& [alias, search] : searches->items()) {
        auto nodes = lenient::value(search, "nodes");
        if (!nodes || !nodes->is_array()) continue;
        for (const auto& node : *nodes)
            if (auto found = item(node)) result.items.push_back(std::move(*found));
    }
    return result;
}

Contributions contributions(std::string_view data) {
    auto reply = lenient::document(data);
    if (!reply || !reply->is_object()) return {std::nullopt, std::string(unreadable)};
    if (auto error = firstError(*reply)) return {std::nullopt, error};
    auto calendar = path(*reply, {"data", "viewer", "contributionsCollection", "contributionCalendar"});
    auto weeks = calendar ? lenient::value(*calendar, "weeks") : nullptr;
    if (!weeks || !weeks->is_array()) return {std::nullopt, std::string(unreadable)};
    std::vector<GitHubContributionDay> days;
    std::int64_t sum = 0;
    for (const auto& week : *weeks) {
        auto weekDays = lenient::value(week, "contributionDays");
        if (!weekDays || !weekDays->is_array()) continue;
        for (const auto& day : *weekDays) {
            auto date = lenient::string(day, "date");
            auto count = integer(lenient::value(day, "contributionCount"));
            if (!date || !count || *count < 0) continue;
            days.push_back(GitHubContributionDay{*date, *count});
            sum = *count > std::numeric_limits<std::int64_t>::max() - sum
                      ? std::numeric_limits<std::int64_t>::max()
                      : sum + *count;
        }
    }
    auto total = integer(lenient::value(*calendar, "totalContributions"));
    return {GitHubContributions(std::move(days), total && *total >= 0 ? *total : sum), std::nullopt};
}

std::optional<std::string> errorMessage(std::string_view data) {
    auto reply = lenient::document(data);
    return reply ? firstError(*reply) : std::nullopt;
}

} // namespace corvane::GitHubReply
