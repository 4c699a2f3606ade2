#include "CorvaneCore/widgets/github/GitHubQueries.hpp"

#include <algorithm>

namespace corvane::GitHubQueries {

namespace {

constexpr std::string_view nodeSelection =
    "nodes { __typename "
    "... on PullRequest { number title url isDraft updatedAt repository { nameWithOwner } "
    "commits(last: 1) { nodes { commit { statusCheckRollup { state } } } } } "
    "... on Issue { number title url updatedAt repository { nameWithOwner } } }";

} // namespace

std::vector<std::string> searches(const GitHubSettings& settings) {
    std::string filter;
    for (const auto& repository : settings.repositories)
        filter += " repo:" + repository;
    switch (settings.shows) {
    case GitHubShows::myPullRequests:
        return {"is:open is:pr author:@me archived:false" + filter};
    case GitHubShows::waitingOnYou:
        return {"is:open is:pr review-requested:@me archived:false" + filter,
                "is:open is:issue assignee:@me archived:false" + filter};
    case GitHubShows::contributions:
        return {};
    }
    return {};
}

std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (char c : text) {
        if (c == '\\' || c == '"') out += '\\';
        out += c;
    }
    return out + "\"";
}

std::string itemsDocument(const std::vector<std::string>& searches, int limit) {
    auto first = std::to_string(std::clamp(limit, 1, maximumFirst));
    std::string lines;
    for (std::size_t i = 0; i < searches.size(); ++i) {
        if (i) lines += "\n";
        lines += "s" + std::to_string(i) + ": search(query: " + quoted(searches[i]) +
                 ", type: ISSUE, first: " + first + ") { " + std::string(nodeSelection) + " }";
    }
    return "query {\n" + lines + "\n}";
}

std::string contributionsDocument() {
    return "query { viewer { contributionsCollection { contributionCalendar { totalContributions "
           "weeks { contributionDays { date contributionCount } } } } } }";
}

std::vector<std::string> arguments(const std::string& document) {
    return {"api", "graphql", "-f", "query=" + document};
}

} // namespace corvane::GitHubQueries
