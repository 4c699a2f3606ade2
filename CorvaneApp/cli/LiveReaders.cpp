#include "CorvaneApp/cli/LiveReaders.hpp"

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneCore/bar/DownloadsTile.hpp"
#include "CorvaneCore/widgets/WidgetAddress.hpp"
#include "CorvaneCore/widgets/github/GitHubBoard.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/widgets/clipboard/ClipboardHistoryFile.hpp"
#include "CorvaneWidgetsUI/github/GitHubSource.hpp"
#include "CorvaneWidgetsUI/live/ConnectedTiles.hpp"
#include "CorvaneWidgetsUI/live/SharedSystemLoad.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageBridge.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageSource.hpp"
#include "CorvaneWidgetsUI/weather/WeatherFetch.hpp"
#include "platform/posix/LogUserAlerts.hpp"

#include <algorithm>
#include <cmath>
#include <exception>
#include <memory>
#include <mutex>
#include <set>

namespace corvane {

namespace {

std::string home(const ToolContext& context) {
    auto found = context.services.environment.find("HOME");
    return found != context.services.environment.end() ? found->second : "";
}

WidgetReading weather(ToolContext& context, const DockWidget& widget) {
    const auto& settings = *widget.weatherSettings();
    std::optional<WeatherReading> reading;
    if (settings.latitude && settings.longitude)
        reading = WeatherFetch(context.services.http, context.services.clock)
                      .reading(*settings.latitude, *settings.longitude, settings.unit);
    return ConnectedTiles::weather(settings, reading, !reading);
}

WidgetReading github(ToolContext& context, const DockWidget& widget) {
    const auto& settings = *widget.githubSettings();
    auto defaults = context.openDefaults();
    auto result = GitHubSource(context.services.runner, home(context), defaults.get()).load(settings);
    auto items = GitHubBoard::select(std::move(result.items), settings);
    return ConnectedTiles::github(settings, items, result.contributions, result.trouble);
}

WidgetReading claudeUsage(ToolContext& context, const DockWidget& widget, Date now) {
    const auto& settings = *widget.claudeUsageSettings();
    ClaudeUsageSource source(
        std::filesystem::absolute(ClaudeUsageSource::defaultRoot(context.services.environment)), 0,
        StoragePath::usageCacheFileURL(context.dataDirectory()));
    std::optional<ClaudeUsageWindow> window;
    if (settings.shows != ClaudeUsageShows::tokens) {
        ClaudeUsageBridge bridge(home(context).empty() ? "." : home(context),
                                 std::filesystem::absolute(context.dataDirectory()));
        if (auto limits = bridge.limits(now))
            window = settings.shows == ClaudeUsageShows::fiveHourLimit ? limits->fiveHour : limits->sevenDay;
        if (window && window->hasReset(now)) window.reset();
    }
    auto trouble = ClaudeUsage::trouble(source.isAvailable(), true, settings.shows, window.has_value());
    ClaudeUsageTotals totals;
    if (!trouble && settings.shows == ClaudeUsageShows::tokens) {
        auto lists = source.takeEntries(start(settings.scope, now, context.services.calendar));
        totals = ClaudeUsage::totalsAcross(lists, settings.scope, now, context.services.calendar);
    }
    return ConnectedTiles::claudeUsage(settings, totals, window, trouble);
}

WidgetReading clipboard(ToolContext& context) {
    auto directory = context.dataDirectory();
    // Without a history there is no key to open either, and none should be made for a look.
    if (!std::filesystem::exists(StoragePath::clipboardFileURL(directory)))
        return ConnectedTiles::clipboard({}, {});
    auto secrets = context.services.openSecrets(directory);
    ClipboardHistoryFile file(StoragePath::clipboardFileURL(directory), *secrets);
    return ConnectedTiles::clipboard(file.read().value_or(std::vector<ClipboardItem>{}), {});
}

/// The history is sealed, and opening it asks the key store: a host that looks every few
/// seconds opens it again only when the file changed.
class ClipboardLook {
public:
    explicit ClipboardLook(ToolContext& context) : context_(context) {}

    WidgetReading read() {
        auto file = StoragePath::clipboardFileURL(context_.dataDirectory());
        std::error_code error;
        Stamp stamp{std::filesystem::file_size(file, error), {}};
        if (!error) stamp.modified = std::filesystem::last_write_time(file, error);
        if (error) stamp = {};
        std::lock_guard lock(mutex_);
        if (seen_ && seen_->first == stamp) return seen_->second;
        auto reading = clipboard(context_);
        seen_.emplace(stamp, reading);
        return reading;
    }

private:
    struct Stamp {
        std::uintmax_t size = 0;
        std::filesystem::file_time_type modified{};
        bool operator==(const Stamp&) const = default;
    };
    ToolContext& context_;
    std::mutex mutex_;
    std::optional<std::pair<Stamp, WidgetReading>> seen_;
};

/// Readers never throw to the user: whatever went wrong becomes the tile's trouble.
ConnectedReader guarded(std::function<WidgetReading(const DockWidget&, Date)> read) {
    return [read = std::move(read)](const DockWidget& widget, Date now) {
        try {
            return read(widget, now);
        } catch (const std::exception&) {
            return WidgetReading{.trouble = "could not read"};
        }
    };
}

/// Where new screenshots land unless the widget names a folder.
std::filesystem::path screenshotsFolder(const ProcessEnvironment& environment) {
    auto home = environment.find("HOME");
    if (home == environment.end() || home->second.empty()) return {};
#ifdef __APPLE__
    return std::filesystem::path(home->second) / "Desktop";
#else
    return std::filesystem::path(home->second) / "Pictures" / "Screenshots";
#endif
}

} // namespace

void addConnectedReaders(LiveWidgetPorts& ports, ToolContext& context) {
    ports.weather = guarded([&context](const DockWidget& widget, Date) { return weather(context, widget); });
    ports.github = guarded([&context](const DockWidget& widget, Date) { return github(context, widget); });
    ports.claudeUsage =
        guarded([&context](const DockWidget& widget, Date now) { return claudeUsage(context, widget, now); });
    ports.clipboard = guarded([look = std::make_shared<ClipboardLook>(context)](const DockWidget&, Date) {
        return look->read();
    });
}

std::vector<DockWidget> placedWidgets(const WidgetsFile& file, const ProfilesFile& profiles) {
    std::vector<DockWidget> placed;
    std::set<Uuid> seen;
    for (const auto& profile : profiles.profiles)
        for (const auto& item : profile.items) {
            const auto* app = item.app();
            auto address = app ? WidgetAddress::fromBundleIdentifier(app->bundleIdentifier) : std::nullopt;
            const auto* widget = address ? file.widget(*address) : nullptr;
            if (widget && seen.insert(widget->id).second) placed.push_back(*widget);
        }
    return placed;
}

std::vector<LiveWidgetRow> readWidgetsNow(ToolContext& context, const std::vector<DockWidget>& widgets) {
    auto& services = context.services;
    auto defaults = context.openDefaults();
    LogUserAlerts alerts(services.log);
    std::optional<SharedSystemLoad> load;
    auto machine = services.machine;
    if (machine.load) machine.load = &load.emplace(*machine.load, services.clock);
    LiveWidgetPorts ports{.clock = services.clock,
                          .calendar = services.calendar,
                          .alerts = &alerts,
                          .defaults = defaults.get(),
                          .machine = machine,
                          .dataDirectory = context.dataDirectory(),
                          .screenshotsFolder = screenshotsFolder(services.environment),
                          .downloadsFolder = DownloadsTile::folder(services.environment)};
    addConnectedReaders(ports, context);

    std::vector<std::unique_ptr<LiveWidget>> models;
    bool takesRates = false;
    for (const auto& widget : widgets) {
        models.push_back(makeLiveWidget(widget, ports));
        models.back()->tick(services.clock.now());
        auto kind = widget.kind.which();
        takesRates = takesRates || kind == WidgetKind::activity || kind == WidgetKind::network ||
                     kind == WidgetKind::pet;
    }
    // Processor shares and network rates are measured between two readings.
    if (takesRates && services.sleeper) {
        services.sleeper->sleep(0.25);
        for (auto& model : models) {
            auto kind = model->widget().kind.which();
            if (kind == WidgetKind::activity || kind == WidgetKind::network || kind == WidgetKind::pet)
                model->tick(services.clock.now());
        }
    }
    std::vector<LiveWidgetRow> rows;
    for (const auto& model : models)
        rows.push_back({model->widget(), model->reading()});
    return rows;
}

} // namespace corvane
