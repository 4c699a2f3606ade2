// The widget, water and colour commands end to end, run as a separate process.

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/timer/PomodoroRun.hpp"
#include "CorvaneCore/widgets/timer/TimerRun.hpp"
#include "app/cli/ToolFixtures.hpp"
#include "platform/posix/PlistFileUserDefaults.hpp"

#include <gtest/gtest.h>

#include <algorithm>

using namespace corvane;

namespace {

class WidgetTool : public EnvironmentTool {
  protected:
    /// A command that must fail with `status`, one line on stderr, and change no file.
    std::string fails(std::vector<std::string> arguments, int status) {
        auto widgets = readText(data / "widgets.json"), profiles = readText(data / "profiles.json"),
             colours = readText(data / "colours.json"), water = readText(data / "water.json");
        auto result = run(arguments);
        EXPECT_EQ(result.status, status) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_EQ(readText(data / "widgets.json"), widgets);
        EXPECT_EQ(readText(data / "profiles.json"), profiles);
        EXPECT_EQ(readText(data / "colours.json"), colours);
        EXPECT_EQ(readText(data / "water.json"), water);
        return result.err;
    }
    Json file(const std::string& name) const { return parseJson(readText(data / name)); }
    Json profile(const std::string& name) const {
        auto profiles = file("profiles.json");
        for (const auto& p : profiles["profiles"])
            if (p["name"] == name) return p;
        return {};
    }
    static std::vector<std::string> bundleIdentifiers(const Json& profile) {
        std::vector<std::string> ids;
        for (const auto& item : profile["items"])
            ids.push_back(item["app"]["_0"].value("bundleIdentifier", ""));
        return ids;
    }
    void useFixtures() {
        writeText(data / "widgets.json", readText(std::string(CORVANE_TEST_DATA) + "/widgets/mixed.json"));
        writeText(data / "profiles.json",
                  readText(std::string(CORVANE_TEST_DATA) + "/widgets/profiles-with-placeholders.json"));
    }
};

/// The entries of the widgets file that this build cannot read, as they stand.
std::vector<Json> unreadable(const Json& widgetsFile) {
    std::vector<Json> entries;
    for (const auto& entry : widgetsFile["widgets"])
        if (!entry.contains("id") || entry["id"] == "5F1E2D3C-4B5A-4978-8695-A4B3C2D1E0F9" ||
            entry["id"] == "11111111-2222-4333-8444-555555555555")
            entries.push_back(entry);
    return entries;
}

} // namespace

TEST_F(WidgetTool, EntriesOfNewerBuildsSurviveEveryCommandThatSaves) {
    useFixtures();
    auto original = unreadable(parseJson(readText(std::string(CORVANE_TEST_DATA) + "/widgets/mixed.json")));
    ASSERT_EQ(original.size(), 3u);
    auto check = [&](const std::string& step) {
        SCOPED_TRACE(step);
        EXPECT_EQ(unreadable(file("widgets.json")), original);
        auto work = bundleIdentifiers(profile("Work"));
        EXPECT_NE(std::find(work.begin(), work.end(), "dev.tessik.Corvane.Slot3"), work.end());
        EXPECT_NE(std::find(work.begin(), work.end(),
                            "dev.tessik.Corvane.Widget.11111111-2222-4333-8444-555555555555"),
                  work.end());
    };

    auto list = ok({"widgets"});
    EXPECT_NE(list.find("3 widgets of a newer version of Corvane kept as is."), std::string::npos);
    EXPECT_NE(list.find("Tea"), std::string::npos);

    ok({"widgets", "show", "Tools", "--in", "Play"});
    check("show");
    EXPECT_EQ(bundleIdentifiers(profile("Play")), std::vector<std::string>{"dev.tessik.Corvane.Slot1"})
        << "the first slot that neither a widget nor an unreadable entry holds";
    auto pet = firstLine(ok({"widgets", "add", "pet", "--name", "Mochi", "--span", "2"}));
    check("add");
    ok({"widgets", "show", pet.substr(0, 8), "--in", "Play"});
    check("show by id prefix");
    EXPECT_EQ(bundleIdentifiers(profile("Play")).back(), "dev.tessik.Corvane.Slot4")
        << "slots 2, 3 and 5 are held";
    ok({"widgets", "show", "mochi", "--in", "Work"});
    auto stackID = firstLine(ok({"widgets", "stack", "Work", "Tea", "Mochi"}));
    check("stack");
    auto stacks = profile("Work")["stacks"];
    ASSERT_EQ(stacks.size(), 1u)
        << "Tea leaves the old stack, which keeps only the unreadable member and goes";
    EXPECT_EQ(stacks[0]["id"], stackID);
    ok({"widgets", "unstack", "Work", "Mochi"});
    check("unstack");
    EXPECT_FALSE(profile("Work").contains("stacks"));
    EXPECT_EQ(bundleIdentifiers(profile("Work")).size(), profile("Work")["items"].size()) << "both stay shown";
    ok({"widgets", "stack", "Work", "Tea", "Mochi"});
    ok({"widgets", "hide", "Mochi", "--in", "Play"});
    check("hide");
    EXPECT_EQ(file("widgets.json")["widgets"][2]["slot"], 4) << "still shown in Work, so it keeps its slot";
    PlistFileUserDefaults defaults(data / std::string(PlistFileUserDefaults::fileName));
    auto mochi = *Uuid::parse(pet), other = Uuid::generate();
    for (const auto& id : {mochi, other}) {
        defaults.setString(TimerRun::defaultsKey(id), "{}");
        defaults.setString(PomodoroRun::defaultsKey(id), "{}");
    }
    ok({"widgets", "remove", "Mochi"});
    check("remove");
    PlistFileUserDefaults reread(data / std::string(PlistFileUserDefaults::fileName));
    EXPECT_EQ(reread.keys(),
              (std::vector<std::string>{PomodoroRun::defaultsKey(other), TimerRun::defaultsKey(other)}))
        << "the removed widget's run records go with it";
    EXPECT_TRUE(profile("Work")["stacks"].empty()) << "a stack of one is no stack";
    ok({"widgets", "hide", "Tools", "--in", "Play"});
    check("hide the last");
    EXPECT_FALSE(file("widgets.json")["widgets"][1].contains("slot"))
        << "shown nowhere, the slot is given back";

    auto json = parseJson(ok({"widgets", "--json"}));
    EXPECT_EQ(json["widgets"][0]["name"], "Tea");
    EXPECT_EQ(json["widgets"][0]["shownIn"], Json::array({"AAAAAAAA-0000-4000-8000-000000000001"}));
    EXPECT_EQ(unreadable(json), original);
}

TEST_F(WidgetTool, BadInputIsOneLineAndChangesNothing) {
    useFixtures();
    ok({"colour", "hex", "#102030"});
    ok({"water", "add", "300"});
    EXPECT_NE(fails({"widgets", "add", "hologram"}, 2)
                  .find("unknown widget kind \"hologram\"; the kinds, with "
                        "their spans: collection (1-4), timer (1-3)"),
              std::string::npos);
    EXPECT_NE(fails({"widgets", "add", "clipboard", "--span", "2"}, 2)
                  .find("a clipboard widget is 1 to 1 tiles wide"),
              std::string::npos);
    EXPECT_EQ(fails({"widgets", "remove", "Kettle"}, 1), "corvane: no widget matches \"Kettle\"\n");
    EXPECT_NE(
        fails({"widgets", "show", "T", "--in", "Work"}, 1).find("\"T\" matches several widgets: \"Tea\""),
        std::string::npos);
    EXPECT_NE(fails({"widgets", "show", "Tea", "--in", "Office"}, 1).find("no workspace matches"),
              std::string::npos);
    EXPECT_NE(
        fails({"widgets", "stack", "Work", "Tea", "Tools"}, 1).find("\"Tools\" is not shown in \"Work\""),
        std::string::npos);
    EXPECT_NE(fails({"widgets", "stack", "Work", "Tea", "tea"}, 2).find("named twice"), std::string::npos);
    EXPECT_EQ(fails({"widgets", "unstack", "Work", "Tools"}, 1), "corvane: \"Tools\" is in no stack in \"Work\"\n");
    EXPECT_EQ(fails({"colour", "hex", "#12345"}, 2), "corvane: \"#12345\" is not a colour like #RRGGBB\n");
    EXPECT_NE(
        fails({"colour", "cmyk", "#123456"}, 2).find("the formats: hex, hexLowercase, rgb, hsl, swiftUI"),
        std::string::npos);
    fails({"water", "add", "0"}, 2);
    fails({"water", "add", "lots"}, 2);
}

TEST_F(WidgetTool, WaterAndColours) {
    EXPECT_NE(ok({"water"}).find("Next glass: now, nothing poured yet today"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(data / "water.json"));
    ok({"widgets", "add", "water"});
    EXPECT_EQ(firstLine(ok({"water", "add"})).substr(0, 13), "Added 250 ml;") << "the widget's glass";
    ok({"water", "add", "1000"});
    auto water = parseJson(ok({"water", "--json"}));
    EXPECT_EQ(water["millilitres"], 1250);
    EXPECT_EQ(water["goal"], 2000);
    EXPECT_EQ(water["week"].size(), 7u);
    EXPECT_EQ(water["week"][6]["millilitres"], 1250);
    EXPECT_GT(water["tankLevel"].get<double>(), 0.9);
    EXPECT_TRUE(water.contains("nextGlass"));
    EXPECT_NE(
        ok({"water"}).find("Today (" + water["day"].get<std::string>() + "): 1250 ml of 2000 ml, 5 glasses"),
        std::string::npos);
    ok({"water", "add", "750"});
    EXPECT_NE(ok({"water"}).find("Next glass: none, the goal is reached"), std::string::npos);

    EXPECT_EQ(ok({"colour", "hsl", "ffffff"}), "hsl(0, 0%, 100%)\n");
    EXPECT_EQ(ok({"colour", "SWIFTUI", " #808080 "}), "Color(red: 0.502, green: 0.502, blue: 0.502)\n");
    EXPECT_EQ(ok({"color", "cssVariable", "#FFFFFF"}), "--colour: #ffffff;\n");
    auto colours = file("colours.json")["colours"];
    ASSERT_EQ(colours.size(), 2u) << "white picked again moves to the front";
    EXPECT_EQ(colours[0]["red"], 255);
    EXPECT_EQ(ok({"colours", "--json"}), readText(data / "colours.json"));
    EXPECT_EQ(firstLine(ok({"colours"})).substr(0, 28), "#FFFFFF  rgb(255, 255, 255) ");
}

TEST_F(WidgetTool, SettingsListEveryFieldAndSetChangesOneThroughTheFilesOwnDecoding) {
    auto id = firstLine(ok({"widgets", "add", "weather"}));
    auto listed = parseJson(ok({"widgets", "settings", id, "--json"}));
    EXPECT_EQ(listed["kind"], "weather");
    EXPECT_TRUE(listed["fields"]["cityName"].is_null()) << "unset fields are listed too";
    EXPECT_EQ(listed["fields"]["unit"], "celsius");
    EXPECT_EQ(listed["fields"]["showsApparent"], false);

    EXPECT_EQ(ok({"widgets", "set", id, "cityName", "Berlin"}), "Weather: cityName = \"Berlin\"\n");
    ok({"widgets", "set", id, "latitude", "52.52"});
    ok({"widgets", "set", id, "unit", "fahrenheit"});
    ok({"widgets", "set", id, "showsApparent", "true"});
    auto stored = file("widgets.json")["widgets"][0]["kind"]["weather"]["_0"];
    EXPECT_EQ(stored["cityName"], "Berlin");
    EXPECT_EQ(stored["latitude"], 52.52);
    EXPECT_EQ(stored["unit"], "fahrenheit");
    EXPECT_EQ(stored["showsApparent"], true);

    EXPECT_EQ(ok({"widgets", "set", id, "cityName", "1234"}), "Weather: cityName = \"1234\"\n")
        << "a text field takes digits as text";
    ok({"widgets", "set", id, "cityName", "null"});
    EXPECT_FALSE(file("widgets.json")["widgets"][0]["kind"]["weather"]["_0"].contains("cityName"));

    auto timer = firstLine(ok({"widgets", "add", "timer"}));
    ok({"widgets", "set", timer, "presets", "[60, 120]"});
    EXPECT_EQ(parseJson(ok({"widgets", "settings", timer, "--json"}))["fields"]["presets"], parseJson("[60, 120]"));
    ok({"widgets", "set", timer, "--name", "Tea", "--span", "1"});
    EXPECT_NE(ok({"widgets", "settings", "Tea"}).find("Tea (timer, 1 tile wide)"), std::string::npos);
}

TEST_F(WidgetTool, SetRefusesWhatTheWidgetsFileWouldNotHold) {
    auto id = firstLine(ok({"widgets", "add", "weather"}));
    auto stopwatch = firstLine(ok({"widgets", "add", "stopwatch"}));
    EXPECT_NE(fails({"widgets", "set", id, "unit", "kelvin"}, 2).find("is no value for unit of a weather widget"),
              std::string::npos);
    EXPECT_NE(fails({"widgets", "set", id, "showsApparent", "yes"}, 2).find("is no value for showsApparent"),
              std::string::npos);
    EXPECT_NE(fails({"widgets", "set", id, "colour", "red"}, 2).find("no field \"colour\"; its fields: "),
              std::string::npos);
    EXPECT_NE(fails({"widgets", "set", stopwatch, "x", "1"}, 2).find("a stopwatch widget has no settings"),
              std::string::npos);
    EXPECT_NE(fails({"widgets", "set", id}, 2).find("nothing to change"), std::string::npos);
    EXPECT_NE(fails({"widgets", "set", id, "--span", "9"}, 2).find("tiles wide, not 9"), std::string::npos);
    EXPECT_NE(fails({"widgets", "set", id, "--name", " "}, 2).find("not blank"), std::string::npos);
    EXPECT_NE(fails({"widgets", "set", id, "unit", "celsius", "--name", "x"}, 2).find("not both"), std::string::npos);
}

TEST_F(WidgetTool, NowReadsEveryShownWidgetInWorkspaceOrder) {
    ok({"new", "Work"});
    ok({"new", "Play"});
    auto add = [&](const std::string& kind) { return firstLine(ok({"widgets", "add", kind})); };
    auto converter = add("converter"), activity = add("activity"), fans = add("fans"), note = add("note"),
         hidden = add("clock");
    for (const auto& [widget, workspace] : std::vector<std::pair<std::string, std::string>>{
             {note, "Play"}, {converter, "Work"}, {activity, "Work"}, {fans, "Work"}, {note, "Work"}})
        ok({"widgets", "show", widget, "--in", workspace});

    auto rows = parseJson(ok({"widgets", "now", "--json"}));
    ASSERT_EQ(rows.size(), 4u) << rows.dump() << "\nthe clock is shown nowhere, the note only once";
    std::vector<std::string> kinds;
    for (const auto& row : rows) kinds.push_back(row["kind"]);
    EXPECT_EQ(kinds, (std::vector<std::string>{"converter", "activity", "fans", "note"}));
    EXPECT_EQ(rows[0]["id"], converter);
    EXPECT_EQ(rows[0]["caption"], "1 m = 3.281 ft");
    EXPECT_EQ(rows[3]["caption"], "Empty note");
    EXPECT_FALSE(rows[3].contains("trouble"));
#ifndef __APPLE__
    // Two readings a moment apart give the processor's share; fans are not readable here.
    EXPECT_EQ(rows[1]["caption"].get<std::string>().rfind("CPU ", 0), 0u) << rows[1].dump();
    EXPECT_NE(rows[1]["caption"], "CPU measuring");
    EXPECT_EQ(rows[2]["trouble"], "not available here");
    EXPECT_EQ(rows[2]["caption"], "");
#endif

    auto table = ok({"widgets", "now"});
    EXPECT_EQ(table.rfind("NAME       KIND       SHOWS", 0), 0u) << table;
    EXPECT_NE(table.find("Converter  converter  1 m = 3.281 ft"), std::string::npos) << table;
}

TEST_F(WidgetTool, TileDrawsAWidgetWithWhatItReadsOrAKindWithItsFirstSettings) {
    auto note = firstLine(ok({"widgets", "add", "note", "--name", "Shopping"}));
    auto blank = ok({"widgets", "tile", "--kind", "note", "--size", "64", "-o", "-"});
    ASSERT_EQ(blank.rfind("\x89PNG\r\n\x1a\n", 0), 0u);
    // The IHDR chunk: width and height, big-endian, right after the signature and chunk header.
    EXPECT_EQ(blank.substr(16, 8), std::string("\0\0\0\x40\0\0\0\x40", 8));
    EXPECT_EQ(ok({"widgets", "tile", "Shopping", "--size", "64", "-o", "-"}), blank) << "an empty note is drawn alike";
    ok({"widgets", "set", "Shopping", "text", "Milk"});
    EXPECT_NE(ok({"widgets", "tile", note, "--size", "64", "-o", "-"}), blank) << "its text is on the tile";
    EXPECT_EQ(ok({"widgets", "tile", "Shopping", "-o", (data / "note.png").string()}),
              "Wrote " + (data / "note.png").string() + " (the tile of \"Shopping\").\n");

    EXPECT_NE(fails({"widgets", "tile", "-o", "-"}, 2).find("give a widget, or --kind"), std::string::npos);
    fails({"widgets", "tile", "Shopping", "--kind", "note", "-o", "-"}, 2);
    fails({"widgets", "tile", "--kind", "hologram", "-o", "-"}, 2);
    fails({"widgets", "tile", "--kind", "note", "--size", "8", "-o", "-"}, 2);
    fails({"widgets", "tile", "Nobody", "-o", "-"}, 1);
}

TEST_F(WidgetTool, NowWithNothingShownSaysHowToShowOne) {
    ok({"widgets", "add", "note"});
    EXPECT_EQ(ok({"widgets", "now"}), "No widget is shown in any workspace. Show one with: corvane widgets show WIDGET --in WORKSPACE\n");
    EXPECT_EQ(ok({"widgets", "now", "--json"}), "[]\n");
}
