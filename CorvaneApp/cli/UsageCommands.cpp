#include "CorvaneApp/cli/UsageCommands.hpp"

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsageLimits.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageBridge.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageSource.hpp"

#include <CLI/CLI.hpp>

#include <iomanip>
#include <map>
#include <memory>
#include <ostream>

namespace corvane {

namespace {

struct Arguments {
    std::string scope = std::string(caseName(ClaudeUsageScope::block));
    std::optional<std::string> root;
    bool json = false;
};

/// Projects listed by name; the JSON form has them all.
constexpr std::size_t listedProjects = 10;

ClaudeUsageBridge bridge(const ToolContext& context) {
    auto home = context.services.environment.find("HOME");
    // Claude Code runs the script from any folder, so its path (and the payload's) must be absolute.
    return ClaudeUsageBridge(home != context.services.environment.end() ? home->second : ".",
                             std::filesystem::absolute(context.dataDirectory()));
}

std::string ago(Date then, Date now) {
    if (now - then < 60) return "just now";
    return *ClaudeUsageLimitsFormat::untilReset(now, then) + " ago";
}

/// The limits while Claude Code's last word on them is fresh, without windows that reset since.
std::optional<ClaudeUsageLimits> freshLimits(std::optional<ClaudeUsageLimits> limits, Date now) {
    if (!limits) return std::nullopt;
    limits->fiveHour = ClaudeUsageLimitsFormat::shownWindow(limits, ClaudeUsageShows::fiveHourLimit, now);
    limits->sevenDay = ClaudeUsageLimitsFormat::shownWindow(limits, ClaudeUsageShows::weeklyLimit, now);
    if (limits->isEmpty()) return std::nullopt;
    return limits;
}

std::string right(const std::string& text, int width) {
    std::ostringstream line;
    line << std::setw(width) << text;
    return line.str();
}

void printLimits(std::ostream& out, const std::optional<ClaudeUsageLimits>& limits, bool isConnected, Date now) {
    if (!limits) {
        if (isConnected)
            out << "Plan limits: " << ClaudeUsage::waitingTile << ".\n";
        else
            out << "Claude Code can hand over how much of your plan is left: corvane usage connect\n";
        return;
    }
    for (auto shows : {ClaudeUsageShows::fiveHourLimit, ClaudeUsageShows::weeklyLimit}) {
        const auto& window = limits->window(shows);
        if (!window) continue;
        out << std::left << std::setw(14) << title(shows) << std::right << std::setw(4)
            << static_cast<long long>(std::llround(window->usedPercentage)) << "%";
        if (auto left = ClaudeUsageLimitsFormat::untilReset(window->resetsAt, now)) out << "  resets in " << *left;
        out << "\n";
    }
    out << "Read " << ago(limits->readAt, now);
    if (limits->subscriptionType) out << ", plan " << *limits->subscriptionType;
    out << ".\n";
}

void printReport(std::ostream& out, const std::map<ClaudeUsageScope, ClaudeUsageTotals>& byScope, ClaudeUsageScope scope,
                 const std::optional<ClaudeUsageLimits>& limits, bool isConnected, Date now) {
    out << std::left << std::setw(14) << "" << right("TOKENS", 8) << right("SENT", 8) << right("WRITTEN", 9)
        << right("CACHE WRITTEN", 15) << right("CACHE READ", 12) << right("MESSAGES", 10) << "\n";
    for (auto each : allClaudeUsageScopes) {
        const auto& t = byScope.at(each);
        out << std::left << std::setw(14) << title(each) << right(ClaudeUsage::shortText(t.tokens), 8)
            << right(ClaudeUsage::shortText(t.inputTokens), 8) << right(ClaudeUsage::shortText(t.outputTokens), 9)
            << right(ClaudeUsage::shortText(t.cacheCreationTokens), 15)
            << right(ClaudeUsage::shortText(t.cacheReadTokens), 12) << right(std::to_string(t.messages), 10) << "\n";
    }
    const auto& totals = byScope.at(scope);
    if (totals.lastActivity) {
        out << "Last activity " << ago(*totals.lastActivity, now) << ".\n";
    }
    out << "\n" << ClaudeUsage::busiestProjects << " (" << title(scope) << ")\n";
    if (totals.projects.empty()) out << "  none\n";
    std::size_t width = 0;
    for (std::size_t i = 0; i < totals.projects.size() && i < listedProjects; ++i)
        width = std::max(width, totals.projects[i].name.size());
    for (std::size_t i = 0; i < totals.projects.size() && i < listedProjects; ++i)
        out << "  " << std::left << std::setw(static_cast<int>(width)) << totals.projects[i].name << "  "
            << ClaudeUsage::shortText(totals.projects[i].tokens) << "\n";
    if (totals.projects.size() > listedProjects)
        out << "  and " << totals.projects.size() - listedProjects << " more\n";
    out << "\n";
    printLimits(out, limits, isConnected, now);
}

} // namespace

void addUsageCommands(CLI::App& app, ToolContext& context) {
    auto args = std::make_shared<Arguments>();

    auto* usage = app.add_subcommand("usage", "Claude Code's token usage on this Mac, and its plan limits");
    usage->require_subcommand(0, 1);
    usage->add_option("--scope", args->scope, "Whose busiest projects to list: block (last 5 hours), today or week")
        ->check(CLI::IsMember({"block", "today", "week"}));
    usage->add_option("--root", args->root, "Transcript folder (default: ~/.claude/projects)");
    usage->add_flag("--json", args->json, "Print the totals of every period, and the limits, as JSON");
    usage->callback([&context, args, usage] {
        if (!usage->get_subcommands().empty()) return;
        const auto scope = *fromCaseName<ClaudeUsageScope>(args->scope);
        // The cache knows its root, so another folder given with --root replaces it rather than
        // mixing; an absolute root keeps a relative one from meaning two folders.
        const auto root = std::filesystem::absolute(args->root ? std::filesystem::path(*args->root)
                                                               : ClaudeUsageSource::defaultRoot(context.services.environment));
        ClaudeUsageSource source(root, 0, StoragePath::usageCacheFileURL(context.dataDirectory()));
        if (!source.isAvailable()) throw std::runtime_error(std::string(ClaudeUsage::notRunTile));
        const auto now = context.services.clock.now();
        const auto& calendar = context.services.calendar;
        // One read of the week serves every period.
        const auto lists = source.takeEntries(start(ClaudeUsageScope::week, now, calendar));
        std::map<ClaudeUsageScope, ClaudeUsageTotals> byScope;
        for (auto each : allClaudeUsageScopes) byScope[each] = ClaudeUsage::totalsAcross(lists, each, now, calendar);
        auto link = bridge(context);
        auto limits = freshLimits(link.limits(now), now);
        const bool isConnected = link.isConnected();

        if (args->json) {
            Json scopes = Json::object();
            for (const auto& [each, totals] : byScope) scopes[std::string(caseName(each))] = encodeClaudeUsageTotals(totals);
            Json report = {{"scope", args->scope},
                           {"totals", encodeClaudeUsageTotals(byScope.at(scope))},
                           {"byScope", std::move(scopes)},
                           {"isConnected", isConnected}};
            if (limits) report["limits"] = encodeClaudeUsageLimits(*limits);
            context.out << prettyJson(report);
            return;
        }
        printReport(context.out, byScope, scope, limits, isConnected, now);
    });

    auto* connect = usage->add_subcommand("connect", "Let Claude Code hand over its plan limits through its status line");
    connect->callback([&context] {
        auto link = bridge(context);
        link.connect();
        context.out << "Connected: Claude Code's status line now runs " << link.scriptURL().string() << ".\n";
        if (auto previous = link.chainedCommand())
            context.out << "It still hands every redraw to: " << *previous << "\n";
    });

    auto* disconnect = usage->add_subcommand("disconnect", "Put Claude Code's status line back the way it was");
    disconnect->callback([&context] {
        auto link = bridge(context);
        auto previous = link.chainedCommand();
        link.disconnect();
        if (previous)
            context.out << "Disconnected: Claude Code's status line runs " << *previous << " again.\n";
        else
            context.out << "Disconnected: Claude Code has no status line again.\n";
    });

    auto* status = usage->add_subcommand("status", "Whether the status line hands the plan limits over, and the last ones");
    status->callback([&context, args] {
        auto link = bridge(context);
        const auto now = context.services.clock.now();
        const bool isConnected = link.isConnected();
        auto limits = freshLimits(link.limits(now), now);
        if (args->json) {
            Json report = {{"isConnected", isConnected}};
            if (limits) report["limits"] = encodeClaudeUsageLimits(*limits);
            context.out << prettyJson(report);
            return;
        }
        context.out << (isConnected ? std::string(ClaudeUsage::connectedNote) + "." : std::string("Not connected."))
                    << "\n";
        printLimits(context.out, limits, isConnected, now);
    });
}

} // namespace corvane
