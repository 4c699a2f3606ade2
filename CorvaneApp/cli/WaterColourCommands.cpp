// The water and colour-picker widgets' own commands: pours, and colours by their hex text.

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/cli/WidgetCommands.hpp"
#include "CorvaneCore/looks/RGBColor.hpp"
#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/widgets/ColourStore.hpp"
#include "CorvaneStorage/widgets/WaterStore.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"

#include <CLI/CLI.hpp>

#include <cmath>
#include <memory>
#include <ostream>

namespace corvane {

namespace {

constexpr int kLargestPour = 10000;

/// The settings of the first widget of that kind, else the kind's defaults: the commands act as
/// that widget's tile would.
template <typename Settings> Settings firstWidgetSettings(ToolContext& context) {
    auto directory = context.dataDirectory();
    WidgetStore widgets(StoragePath::widgetsFileURL(directory),
                        StoragePath::legacyCollectionsFileURL(directory), &context.services.notifier);
    for (const auto& widget : widgets.file().widgets)
        if (auto* settings = widget.settings<Settings>()) return *settings;
    return Settings{};
}

int inMillilitres(int amount, WaterUnit unit) {
    return unit == WaterUnit::ounces ? WaterAmount::millilitres(amount) : amount;
}

std::string amountText(int millilitres, WaterUnit unit) {
    return unit == WaterUnit::ounces ? WaterAmount::ouncesText(millilitres) + " oz"
                                     : std::to_string(millilitres) + " ml";
}

std::string minutesText(double seconds) {
    auto minutes = static_cast<long>(std::ceil(std::abs(seconds) / 60));
    return std::to_string(minutes) + " min";
}

struct WaterView {
    WaterSettings settings;
    int goal = 0;
    int glass = 0;
    Date now;
    std::string day;
    int today = 0;
    double tankLevel = 0;
    std::optional<Date> nextGlass;
    std::vector<WaterDay> week;
};

WaterView waterView(const WaterLog& log, const WaterSettings& settings, Date now, const Calendar& calendar) {
    WaterView view{settings};
    view.goal = inMillilitres(settings.goal, settings.unit);
    view.glass = inMillilitres(settings.glass, settings.unit);
    view.now = now;
    view.day = WaterLog::key(now, calendar);
    view.today = log.total(now, calendar);
    view.tankLevel = log.tankLevel(now, view.goal, settings.refillMinutes, calendar);
    view.nextGlass = log.nextGlass(now, view.goal, settings.refillMinutes, calendar);
    view.week = log.week(now, calendar);
    return view;
}

void printWater(const WaterView& view, std::ostream& out) {
    auto unit = view.settings.unit;
    out << "Today (" << view.day << "): " << amountText(view.today, unit) << " of "
        << amountText(view.goal, unit);
    if (view.glass > 0) {
        auto glasses = view.today / view.glass;
        out << ", " << glasses << (glasses == 1 ? " glass of " : " glasses of ")
            << amountText(view.glass, unit);
    }
    out << "\nTank: " << std::lround(view.tankLevel * 100) << "%\n";
    out << "Next glass: ";
    if (view.goal >= 1 && view.today >= view.goal)
        out << "none, the goal is reached\n";
    else if (!view.nextGlass)
        out << "now, nothing poured yet today\n";
    else if (*view.nextGlass > view.now)
        out << "in " << minutesText(*view.nextGlass - view.now) << "\n";
    else
        out << "due " << minutesText(view.now - *view.nextGlass) << " ago\n";
    out << "This week:\n";
    for (const auto& day : view.week)
        out << "  " << day.day << "  " << amountText(day.millilitres, unit) << "\n";
}

/// Amounts in millilitres, dates as numbers: the water file's own forms.
Json waterJson(const WaterView& view) {
    auto week = Json::array();
    for (const auto& day : view.week)
        week.push_back({{"day", day.day}, {"millilitres", day.millilitres}});
    Json json{{"day", view.day},
              {"millilitres", view.today},
              {"goal", view.goal},
              {"glass", view.glass},
              {"tankLevel", view.tankLevel},
              {"week", std::move(week)},
              {"refillMinutes", view.settings.refillMinutes}};
    if (view.nextGlass) json["nextGlass"] = view.nextGlass->sinceReferenceDate;
    return json;
}

ColourFormat parseFormat(const std::string& text) {
    auto name = text::trimmed(text);
    std::string names;
    for (std::size_t i = 0; i < EnumCases<ColourFormat>::names.size(); ++i) {
        if (text::equalsIgnoringCase(EnumCases<ColourFormat>::names[i], name))
            return static_cast<ColourFormat>(i);
        names += (names.empty() ? "" : ", ") + std::string(EnumCases<ColourFormat>::names[i]);
    }
    throw UsageError("unknown colour format \"" + text + "\"; the formats: " + names);
}

// Values the parser fills in; owned by the callbacks, so they live as long as the parser.
struct Arguments {
    bool json = false;
    std::optional<int> amount;
    std::string format, hex;
};

} // namespace

void addWaterCommands(CLI::App& app, ToolContext& context) {
    auto& out = context.out;
    auto args = std::make_shared<Arguments>();
    auto openStore = [&context] {
        return std::make_unique<WaterStore>(StoragePath::waterFileURL(context.dataDirectory()),
                                            context.services.calendar, &context.services.notifier);
    };

    auto* water = app.add_subcommand("water", "Today's water, the tank, the next glass and the week");
    water->add_flag("--json", args->json, "Print them as JSON, amounts in millilitres");
    water->callback([&context, &out, args, water, openStore] {
        if (!water->get_subcommands().empty()) return;
        auto settings = firstWidgetSettings<WaterSettings>(context);
        auto view =
            waterView(openStore()->log(), settings, context.services.clock.now(), context.services.calendar);
        if (args->json)
            out << prettyJson(waterJson(view));
        else
            printWater(view, out);
    });

    auto* add = water->add_subcommand("add", "Log a glass of water");
    add->add_option("ML", args->amount, "Millilitres (default: the water widget's glass)");
    add->callback([&context, &out, args, openStore] {
        if (args->amount && (*args->amount < 1 || *args->amount > kLargestPour))
            throw UsageError("give the amount in millilitres, 1 to " + std::to_string(kLargestPour));
        auto settings = firstWidgetSettings<WaterSettings>(context);
        auto amount = args->amount ? *args->amount : inMillilitres(settings.glass, settings.unit);
        if (amount < 1) throw UsageError("the water widget's glass is empty; give the amount in millilitres");
        auto store = openStore();
        auto now = context.services.clock.now();
        store->add(amount, now);
        auto goal = inMillilitres(settings.goal, settings.unit);
        out << "Added " << amountText(amount, settings.unit) << "; today "
            << amountText(store->log().total(now, context.services.calendar), settings.unit) << " of "
            << amountText(goal, settings.unit) << ".\n";
    });
}

void addColourCommands(CLI::App& app, ToolContext& context) {
    auto& out = context.out;
    auto args = std::make_shared<Arguments>();
    auto openStore = [&context] {
        return std::make_unique<ColourStore>(StoragePath::coloursFileURL(context.dataDirectory()),
                                             &context.services.notifier);
    };

    auto* colour =
        app.add_subcommand("colour", "Print a colour in a format and keep it in the picked colours");
    colour->alias("color");
    colour->add_option("FORMAT", args->format, "hex, hexLowercase, rgb, hsl, swiftUI, nsColor or cssVariable")
        ->required();
    colour->add_option("HEX", args->hex, "The colour as #RRGGBB")->required();
    colour->callback([&context, &out, args, openStore] {
        auto format = parseFormat(args->format);
        auto rgb = RGBColor::parseHex(args->hex);
        if (!rgb) throw UsageError("\"" + args->hex + "\" is not a colour like #RRGGBB");
        PickedColour picked;
        picked.id = Uuid::generate();
        picked.red = static_cast<int>(std::lround(rgb->red * 255));
        picked.green = static_cast<int>(std::lround(rgb->green * 255));
        picked.blue = static_cast<int>(std::lround(rgb->blue * 255));
        picked.pickedAt = context.services.clock.now();
        auto limit = firstWidgetSettings<ColourPickerSettings>(context).historyLimit;
        openStore()->add(picked, limit);
        out << formattedColour(format, picked) << "\n";
    });

    auto* colours = app.add_subcommand("colours", "The picked colours, newest first");
    colours->alias("colors");
    colours->add_flag("--json", args->json, "Print the colours file as it is");
    colours->callback([&out, args, openStore] {
        auto store = openStore();
        if (args->json) {
            out << colourHistoryText(store->history());
            return;
        }
        if (store->history().colours.empty()) {
            out << "No colours picked yet. Keep one with: corvane colour hex RRGGBB\n";
            return;
        }
        for (const auto& picked : store->history().colours)
            out << formattedColour(ColourFormat::hex, picked) << "  "
                << formattedColour(ColourFormat::rgb, picked) << "  " << iso8601(picked.pickedAt, false)
                << (picked.isPinned ? "  pinned" : "") << "\n";
    });
}

} // namespace corvane
