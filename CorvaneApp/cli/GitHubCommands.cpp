#include "CorvaneApp/cli/GitHubCommands.hpp"

#include "CorvaneApp/cli/TextColumns.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneCore/widgets/github/GitHubBoard.hpp"
#include "CorvaneWidgetsUI/github/GitHubSource.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <memory>
#include <ostream>
#include <stdexcept>

namespace corvane {

namespace {

struct Arguments {
    std::string shows = "myPullRequests";
    std::vector<std::string> repositories;
    int limit = GitHubSettings{}.limit;
    bool json = false;
};

bool isRepositoryName(const std::string& text) {
    auto slash = text.find('/');
    if (slash == std::string::npos || slash == 0 || slash + 1 == text.size()) return false;
    if (text.find('/', slash + 1) != std::string::npos) return false;
    return std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return std::isalnum(c) || c == '-' || c == '_' || c == '.' || c == '/';
    });
}

/// "1,234".
std::string grouped(std::int64_t number) {
    auto digits = std::to_string(number);
    auto start = digits.front() == '-' ? 1u : 0u;
    for (auto at = static_cast<std::ptrdiff_t>(digits.size()) - 3; at > static_cast<std::ptrdiff_t>(start);
         at -= 3)
        digits.insert(static_cast<std::size_t>(at), ",");
    return digits;
}

/// "now", "12m", "5h", "3d", "7w", "2y": how long ago, in the largest whole unit.
std::string age(Date then, Date now) {
    auto seconds = now - then;
    if (seconds < 60) return "now";
    if (seconds < 3600) return std::to_string(static_cast<long long>(seconds / 60)) + "m";
    if (seconds < 86400) return std::to_string(static_cast<long long>(seconds / 3600)) + "h";
    if (seconds < 14 * 86400) return std::to_string(static_cast<long long>(seconds / 86400)) + "d";
    if (seconds < 365 * 86400) return std::to_string(static_cast<long long>(seconds / (7 * 86400))) + "w";
    if (seconds < 1e12) return std::to_string(static_cast<long long>(seconds / (365.25 * 86400))) + "y";
    return "long ago";
}

std::string checksWord(const GitHubItem& item) {
    if (item.isIssue) return "issue";
    if (item.checks == GitHubChecks::none) return "–";
    return std::string(caseName(item.checks));
}

void printItems(std::ostream& out, const std::vector<GitHubItem>& items, GitHubShows shows, Date now) {
    std::string heading = shows == GitHubShows::waitingOnYou ? "Waiting on you" : "My pull requests";
    if (items.empty()) {
        out << (shows == GitHubShows::waitingOnYou ? "Nothing waiting on you" : "No open pull requests")
            << "\n";
        return;
    }
    if (auto line = GitHubBoard::failingLine(items)) heading += " · " + *line;
    out << heading << "\n";
    std::size_t keyWidth = 0, checksWidth = 0, ageWidth = 0;
    for (const auto& item : items) {
        keyWidth = std::max(keyWidth, displayWidth(item.repository + " #" + std::to_string(item.number)));
        checksWidth = std::max(checksWidth, displayWidth(checksWord(item)));
        ageWidth = std::max(ageWidth, displayWidth(age(item.updatedAt, now)));
    }
    for (const auto& item : items)
        out << "  " << padded(checksWord(item), checksWidth) << "  "
            << padded(item.repository + " #" + std::to_string(item.number), keyWidth) << "  "
            << rightAligned(age(item.updatedAt, now), ageWidth) << "  " << item.title
            << (item.isDraft ? " (draft)" : "") << "\n";
}

void printContributions(std::ostream& out, const GitHubContributions& calendar) {
    out << grouped(calendar.total) << (calendar.total == 1 ? " contribution" : " contributions")
        << " in the last year\n";
    auto streak = calendar.streak();
    out << "Streak: " << streak << (streak == 1 ? " day" : " days");
    if (auto busiest = calendar.busiest())
        out << " · busiest day " << busiest->date << " (" << grouped(busiest->count) << ")";
    out << "\n";
    auto columns = calendar.columns(53);
    if (columns.empty()) return;
    static const char* const shades[] = {"·", "░", "▒", "▓", "█"};
    static const char* const labels[] = {"    ", "Mon ", "    ", "Wed ", "    ", "Fri ", "    "};
    out << "\n";
    for (std::size_t weekday = 0; weekday < 7; ++weekday) {
        std::string row = labels[weekday];
        for (const auto& week : columns)
            row += week[weekday] ? shades[calendar.shade(week[weekday]->count)] : " ";
        while (!row.empty() && row.back() == ' ')
            row.pop_back();
        out << row << "\n";
    }
    out << "    Less " << shades[0] << shades[1] << shades[2] << shades[3] << shades[4] << " More\n";
}

std::string troubleLine(const GitHubTrouble& trouble) {
    std::string line(trouble.tileText());
    if (trouble.kind != GitHubTrouble::Kind::failed || trouble.message.empty()) return line;
    // The tool's error may run to several lines; the first says what happened.
    return line + ": " + trouble.message.substr(0, trouble.message.find('\n'));
}

} // namespace

void addGitHubCommands(CLI::App& app, ToolContext& context) {
    auto args = std::make_shared<Arguments>();
    auto* github = app.add_subcommand(
        "github", "Your pull requests, what waits on you, or your contributions, through gh");
    github->add_option("--shows", args->shows, "myPullRequests (default), waitingOnYou or contributions")
        ->check(CLI::IsMember({"myPullRequests", "waitingOnYou", "contributions"}));
    github->add_option("--repo", args->repositories, "Only this repository, OWNER/NAME (repeatable)");
    github->add_option("--limit", args->limit, "How many items to show (default 5; at least 1)");
    github->add_flag("--json", args->json, "Print the items or the calendar as JSON");
    github->callback([&context, args] {
        GitHubSettings settings;
        settings.shows = *fromCaseName<GitHubShows>(args->shows);
        for (const auto& repository : args->repositories)
            if (!isRepositoryName(repository))
                throw UsageError("\"" + repository + "\" is not a repository like OWNER/NAME");
        settings.repositories = args->repositories;
        settings.limit = args->limit;

        auto defaults = context.openDefaults();
        auto home =
            context.services.environment.contains("HOME") ? context.services.environment.at("HOME") : "";
        GitHubSource source(context.services.runner, home, defaults.get());
        auto result = source.load(settings);
        if (result.trouble) throw std::runtime_error(troubleLine(*result.trouble));

        if (settings.shows == GitHubShows::contributions) {
            auto calendar = result.contributions.value_or(GitHubContributions{});
            if (args->json)
                context.out << githubContributionsText(calendar);
            else
                printContributions(context.out, calendar);
            return;
        }
        auto items = GitHubBoard::select(std::move(result.items), settings);
        if (args->json)
            context.out << githubItemsText(items);
        else
            printItems(context.out, items, settings.shows, context.services.clock.now());
    });
}

} // namespace corvane
