#include "CorvaneCore/widgets/WidgetCoding.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

const std::string kId = "0A7E5C1D-2B3F-4A55-9C6D-7E8F9A0B1C2D";

DockWidget decodeWidget(const std::string& text) {
    auto json = parseJson(text);
    return decodeDockWidget(JsonReader(json));
}

DockWidget widgetWithKind(const std::string& kind, const std::string& extra = "") {
    return decodeWidget(R"({"id": ")" + kId + R"(", "name": "W", "kind": )" + kind + extra + "}");
}

std::vector<WidgetKind> allKinds() {
    std::vector<WidgetKind> kinds;
    for (std::size_t i = 0; i < EnumCases<WidgetKind>::names.size(); ++i)
        kinds.push_back(static_cast<WidgetKind>(i));
    return kinds;
}

WidgetsFile fixture(const std::string& name) {
    return widgetsFileFromText(readText(std::string(CORVANE_TEST_DATA) + "/widgets/" + name));
}

} // namespace

TEST(DockWidgetCoding, BareStopwatchTakesSpanOneAndNoSlotAndWritesBackWithoutSlot) {
    auto widget = widgetWithKind(R"({"stopwatch": {}})");
    EXPECT_EQ(widget.kind.which(), WidgetKind::stopwatch);
    EXPECT_EQ(widget.span, 1);
    EXPECT_FALSE(widget.slot);
    auto json = encodeDockWidget(widget);
    EXPECT_FALSE(json.contains("slot"));
    EXPECT_EQ(json["span"], 1);
    EXPECT_EQ(json["kind"], Json::parse(R"({"stopwatch": {}})"));
}

TEST(DockWidgetCoding, SpansAreDefaultedByKindAndStyleAndClampedToTheKind) {
    struct Case {
        std::string kind;
        std::string span;
        int expected;
    };
    const std::vector<Case> cases = {
        {R"({"clipboard": {"_0": {}}})", R"(, "span": 9)", 1},
        {R"({"timer": {"_0": {}}})", R"(, "span": 0)", 1},
        {R"({"timer": {"_0": {}}})", R"(, "span": 4)", 3},
        {R"({"note": {"_0": {}}})", R"(, "span": -7)", 1},
        {R"({"converter": {"_0": {}}})", R"(, "span": 3)", 2},
        {R"({"github": {"_0": {"shows": "contributions"}}})", "", 4},
        {R"({"github": {"_0": {}}})", "", 3},
        {R"({"calendar": {"_0": {"style": "agenda"}}})", "", 3},
        {R"({"calendar": {"_0": {"style": "date"}}})", "", 1},
        {R"({"calendar": {"_0": {}}})", "", 2},
        {R"({"reminders": {"_0": {"style": "list"}}})", "", 3},
        {R"({"reminders": {"_0": {"style": "count"}}})", "", 1},
        {R"({"weather": {"_0": {"style": "forecast"}}})", "", 3},
        {R"({"weather": {"_0": {}}})", "", 2},
        {R"({"pomodoro": {"_0": {}}})", "", 2},
        {R"({"water": {"_0": {}}})", "", 3},
    };
    for (const auto& c : cases)
        EXPECT_EQ(widgetWithKind(c.kind, c.span).span, c.expected) << c.kind << c.span;
}

TEST(DockWidgetCoding, TheFirstKnownKeyInTheFixedOrderWins) {
    struct Case {
        std::string kind;
        WidgetKind expected;
    };
    const std::vector<Case> cases = {
        {R"({"timer": {"_0": {}}, "collection": {"apps": []}})", WidgetKind::collection},
        {R"({"weather": {"_0": {}}, "fans": {}})", WidgetKind::fans},
        {R"({"weather": {"_0": {}}, "keyboardLock": {"_0": {}}})", WidgetKind::keyboardLock},
        {R"({"converter": {"_0": {}}, "airdrop": {}})", WidgetKind::airdrop},
        {R"({"hologram": {}, "emoji": {"_0": {}}})", WidgetKind::emoji},
    };
    for (const auto& c : cases)
        EXPECT_EQ(widgetWithKind(c.kind).kind.which(), c.expected) << c.kind;
}

TEST(DockWidgetCoding, KindsThatCannotBeReadFailWithTheirReason) {
    struct Case {
        std::string kind;
        std::string description;
    };
    const std::vector<Case> cases = {
        {R"({"hologram": {"_0": {}}})", "Unknown widget kind"},
        {R"({})", "Unknown widget kind"},
        {R"({"timer": {}})", "No value associated with key \"_0\"."},
        {R"({"collection": {"layout": "grid"}})", "No value associated with key \"apps\"."},
        {R"({"battery": {"_0": {"style": "hologram"}}})",
         "Cannot initialize BatteryTileStyle from invalid String value hologram"},
        {R"({"pomodoro": {"_0": {"focus": "long"}}})",
         "Expected to decode Double but found a string instead."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.kind);
        EXPECT_EQ(thrown<DecodingError>([&] { widgetWithKind(c.kind); }).value().description, c.description);
    }
}

TEST(DockWidgetCoding, EveryKindRoundTripsAndEmptySettingsReadAsDefaults) {
    for (auto which : allKinds()) {
        const std::string name(caseName(which));
        DockWidget widget(Uuid::generate(), "W " + name, 7, DockWidget::Kind::defaults(which));
        auto json = encodeDockWidget(widget);
        ASSERT_TRUE(json["kind"].contains(name)) << name;
        EXPECT_EQ(decodeDockWidget(JsonReader(json)), widget) << name;

        // A kind written by an older build without any settings fields reads as the defaults.
        Json sparse = json;
        auto& payload = sparse["kind"][name];
        if (payload.contains("_0")) payload["_0"] = Json::object();
        if (which == WidgetKind::collection) payload.erase("layout");
        EXPECT_EQ(decodeDockWidget(JsonReader(sparse)), widget) << name;
    }
}

TEST(DockWidgetCoding, SettingsRecordsKeepEveryFieldThroughTheFile) {
    // Every field off its default, so that a field the coding leaves out shows.
    const std::vector<DockWidget::Kind> kinds = {
        PetSettings{.species = PetSpecies::warriorGirl,
                    .coatID = "ember",
                    .follows = PetMetric::memory,
                    .range = PetRange::dock,
                    .size = PetSize::large,
                    .showsReading = true,
                    .staysWhenDockHides = true},
        ColourPickerSettings{.format = ColourFormat::cssVariable,
                             .copiesOnPick = false,
                             .historyLimit = 40,
                             .hotkey = Hotkey{8, HotkeyModifiers{HotkeyModifiers::command | HotkeyModifiers::shift}}},
        BookmarkSettings{.links = {{Uuid::generate(), "https://example.org", "Example"}, {Uuid::generate(), "x.org", {}}},
                         .browserBundleIdentifier = "org.mozilla.firefox"},
        FilesSettings{.folderPath = "/Users/me/Inbox", .click = FileClick::reveal, .seenAt = Date{7.25e8}},
        CalendarSettings{.style = CalendarTileStyle::nextEvent, .calendars = {.accountIDs = {"a"}, .calendarIDs = {"b", "c"}}},
        ClaudeUsageSettings{.shows = ClaudeUsageShows::weeklyLimit, .budget = 25'000'000'000},
        ShelfSettings{.shelf = {.paths = {"/Users/me/Desktop/a.pdf", "/Users/me/Desktop/b.png"}}, .removesOnDragOut = true},
        DockWidget::Collection{.apps = {AppEntry{"/Applications/Mail.app", "com.apple.mail", "Mail", Bytes{1, 2, 3}}},
                               .layout = CollectionLayout::vertical},
    };
    for (const auto& kind : kinds) {
        DockWidget widget(Uuid::generate(), "W", {}, kind);
        auto text = prettyJson(encodeDockWidget(widget));
        EXPECT_EQ(decodeWidget(text), widget) << text;
    }
}

TEST(DockWidgetCoding, DecodingFixesRangesAndPicksTheCategorysUnits) {
    EXPECT_EQ(widgetWithKind(R"({"colourPicker": {"_0": {"historyLimit": 100}}})")
                  .colourPickerSettings()
                  ->historyLimit,
              60);
    EXPECT_EQ(widgetWithKind(R"({"colourPicker": {"_0": {"historyLimit": 1}}})")
                  .colourPickerSettings()
                  ->historyLimit,
              4);

    auto temperature =
        *widgetWithKind(R"({"converter": {"_0": {"category": "temperature"}}})").converterSettings();
    EXPECT_EQ(temperature.from, "°C");
    EXPECT_EQ(temperature.to, "°F");
    EXPECT_EQ(temperature.value, 1.0);
    auto mass =
        *widgetWithKind(R"({"converter": {"_0": {"category": "mass", "to": "oz"}}})").converterSettings();
    EXPECT_EQ(mass.from, "kg");
    EXPECT_EQ(mass.to, "oz");

    auto weather =
        *widgetWithKind(R"({"weather": {"_0": {"latitude": 52.52, "cityName": null}}})").weatherSettings();
    EXPECT_EQ(weather.latitude, 52.52);
    EXPECT_FALSE(weather.longitude);
    EXPECT_FALSE(weather.cityName);
    EXPECT_EQ(weather.unit, WeatherUnit::celsius);
}

TEST(WidgetsFileCoding, UnreadableEntriesAreKeptVerbatimAndWrittenAfterTheWidgets) {
    auto file = fixture("mixed.json");
    ASSERT_EQ(file.widgets.size(), 2u);
    EXPECT_EQ(file.widgets[0].name, "Tea");
    EXPECT_EQ(file.widgets[1].name, "Tools");
    ASSERT_EQ(file.unrecognized.size(), 3u);

    auto original = Json::parse(readText(std::string(CORVANE_TEST_DATA) + "/widgets/mixed.json"))["widgets"];
    auto written = Json::parse(widgetsFileText(file));
    EXPECT_EQ(written["version"], 1);
    EXPECT_FALSE(written.contains("unrecognized"));
    const auto& list = written["widgets"];
    ASSERT_EQ(list.size(), 5u);
    EXPECT_EQ(list[0]["name"], "Tea");
    EXPECT_EQ(list[1]["name"], "Tools");
    EXPECT_EQ(list[2], original[1]);
    EXPECT_EQ(list[3], original[3]);
    EXPECT_EQ(list[4], original[4]);
    // Whole numbers stay whole numbers, so the entry is unchanged even in its text.
    EXPECT_EQ(list[2]["kind"]["aquarium"]["_0"]["fish"].dump(), "7");

    EXPECT_EQ(widgetsFileFromText(widgetsFileText(file)), file);
}

TEST(WidgetsFileCoding, AnEmptyListIsAnEmptyFileButAMissingListOrVersionFails) {
    auto empty = widgetsFileFromText(R"({"version": 1, "widgets": []})");
    EXPECT_TRUE(empty.widgets.empty());
    EXPECT_TRUE(empty.unrecognized.empty());
    for (const char* text :
         {R"([])", R"({"version": 1})", R"({"widgets": []})", R"({"version": 1, "widgets": {}})"})
        EXPECT_THROW(widgetsFileFromText(text), DecodingError) << text;
}

TEST(JSONValue, EncodesBackToTheValueItWasReadFrom) {
    const std::string text =
        R"({"a": [1, -2, 2.5, -0.0, 1e300, 9007199254740992, true, false, null, "ünï \"q\""], "b": {}, "c": []})";
    auto json = Json::parse(text);
    auto value = JSONValue::fromJson(json);
    EXPECT_EQ(value.toJson(), json);
    EXPECT_EQ(value.toJson().dump(), json.dump());
    EXPECT_EQ(JSONValue::fromJson(value.toJson()), value);
}

TEST(WidgetsFile, FreeSlotCountsWidgetsAndWholeNumberSlotsOfUnreadableEntries) {
    auto slotted = [](int slot) { return DockWidget(Uuid::generate(), "W", slot, DockWidget::Kind()); };
    auto unknown = [](const std::string& slot) {
        return UnrecognizedWidget{
            JSONValue::fromJson(Json::parse(R"({"kind": {"x": {}}, "slot": )" + slot + "}"))};
    };

    WidgetsFile file;
    EXPECT_EQ(file.freeSlot(), 1);
    file.widgets = {slotted(1), slotted(2), DockWidget(Uuid::generate(), "no slot", {}, DockWidget::Kind())};
    file.unrecognized = {unknown("3"), unknown("3.0"), unknown("4.5"), unknown("\"4\""), unknown("null")};
    EXPECT_EQ(file.freeSlot(), 4);
    file.unrecognized = {unknown("3.5"), unknown("\"3\"")};
    EXPECT_EQ(file.freeSlot(), 3);

    file.widgets.clear();
    for (int slot = 1; slot <= 11; ++slot)
        file.widgets.push_back(slotted(slot));
    file.unrecognized = {unknown("12")};
    EXPECT_FALSE(file.freeSlot());
    EXPECT_EQ(DockSlot::freeSlot(file.widgets), 12);
}

TEST(WidgetsFile, MigratesLegacyCollectionsToSlottedCollectionWidgets) {
    auto file =
        WidgetsFile::migrating(readText(std::string(CORVANE_TEST_DATA) + "/widgets/collections.json"));
    EXPECT_EQ(file.version, 1);
    EXPECT_TRUE(file.unrecognized.empty());
    ASSERT_EQ(file.widgets.size(), 2u);
    const auto& browsers = file.widgets[0];
    EXPECT_EQ(browsers.id.string(), "C0FFEE00-1234-4ABC-8DEF-000000000001");
    EXPECT_EQ(browsers.name, "Browsers");
    EXPECT_EQ(browsers.slot, 4);
    EXPECT_EQ(browsers.span, 1);
    EXPECT_EQ(browsers.collectionLayout(), CollectionLayout::grid);
    ASSERT_EQ(browsers.apps()->size(), 2u);
    EXPECT_EQ((*browsers.apps())[0],
              (AppEntry{"/Applications/Safari.app", "com.apple.Safari", "Safari", {}}));
    EXPECT_EQ((*browsers.apps())[1].path, "/Applications/Firefox.app");
    EXPECT_EQ(file.widgets[1].slot, 1);

    EXPECT_THROW(WidgetsFile::migrating(
                     readText(std::string(CORVANE_TEST_DATA) + "/widgets/collections-without-slot.json")),
                 DecodingError);
    EXPECT_THROW(WidgetsFile::migrating("not json"), DecodingError);
}
