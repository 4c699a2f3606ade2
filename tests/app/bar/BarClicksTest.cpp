// What a click or a launch request on a widget or a folder leads to.

#include "CorvaneApp/bar/BarClicks.hpp"
#include "CorvaneCore/widgets/WidgetPlacement.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace corvane;

TEST(BarClicks, AFolderStackListsItsItemsInTheOrderStoredForItAndAnUnreadableOneIsEmpty) {
    FolderStack::Lister list = [](const std::filesystem::path& folder) -> std::optional<std::vector<FolderStack::Entry>> {
        if (folder != "/Users/ada/Downloads") return std::nullopt;
        return std::vector<FolderStack::Entry>{
            {.path = "/Users/ada/Downloads/report 10.pdf", .dateAdded = Date{300}},
            {.path = "/Users/ada/Downloads/report 9.pdf", .dateAdded = Date{100}},
            {.path = "/Users/ada/Downloads/Photos", .dateAdded = Date{200}, .isDirectory = true},
        };
    };
    auto names = [](const BarClicks::StackPanel& panel) {
        std::vector<std::string> found;
        for (const auto& item : panel.items) found.push_back(item.name);
        return found;
    };
    // Options stored under the path with a trailing slash belong to the folder all the same.
    JSONValue options = JSONValue::fromJson({{"/Users/ada/Downloads/", {{"sortOrder", "dateAdded"}, {"viewStyle", "list"}}}});
    auto panel = BarClicks::stackPanel("/Users/ada/Downloads", options, list);
    EXPECT_EQ(panel.title, "Downloads");
    EXPECT_EQ(panel.options.viewStyle, StackOptions::ViewStyle::list);
    EXPECT_EQ(names(panel), (std::vector<std::string>{"report 10.pdf", "Photos", "report 9.pdf"}));

    auto byName = BarClicks::stackPanel("/Users/ada/Downloads/", JSONValue::Object{}, list);
    EXPECT_EQ(byName.options, StackOptions{});
    EXPECT_EQ(names(byName), (std::vector<std::string>{"Photos", "report 9.pdf", "report 10.pdf"}));
    EXPECT_TRUE(BarClicks::stackPanel("/gone", options, list).items.empty());
}

TEST(BarClicks, AWidgetLaunchRequestFindsTheWidgetOnTheActiveWorkspaceFirst) {
    auto make = [](WidgetKind kind) {
        return DockWidget(Uuid::generate(), "W", std::nullopt, DockWidgetKind::defaults(kind));
    };
    auto elsewhere = make(WidgetKind::timer), shown = make(WidgetKind::timer), note = make(WidgetKind::note);
    WidgetsFile widgets;
    widgets.widgets = {elsewhere, note, shown};
    Profile work{.id = Uuid::generate(), .name = "Work"};
    work = WidgetPlacement::setting(note, true, work, "/Applications/Helper.app");
    work = WidgetPlacement::setting(shown, true, work, "/Applications/Helper.app");
    EXPECT_EQ(BarClicks::launchedWidget("timer", widgets, &work), shown.id);
    EXPECT_EQ(BarClicks::launchedWidget("timer", widgets, nullptr), elsewhere.id);
    EXPECT_EQ(BarClicks::launchedWidget("water", widgets, &work), std::nullopt);
    EXPECT_EQ(BarClicks::launchedWidget("sundial", widgets, &work), std::nullopt);

    EXPECT_TRUE(BarClicks::actsInPlace(WidgetKind::pomodoro));
    EXPECT_TRUE(BarClicks::actsInPlace(WidgetKind::music));
    EXPECT_FALSE(BarClicks::actsInPlace(WidgetKind::note)) << "its page is where it is read and written";
    EXPECT_FALSE(BarClicks::actsInPlace(WidgetKind::weather));
}
