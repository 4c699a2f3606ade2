#include "CorvaneCore/widgets/WidgetAddress.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {
const Uuid kId = *Uuid::parse("0A7E5C1D-2B3F-4A55-9C6D-7E8F9A0B1C2D");
}

TEST(WidgetAddress, ReadsOnlyWellFormedPlaceholderIdentifiers) {
    struct Case {
        std::optional<std::string> identifier;
        std::optional<WidgetAddress> expected;
    };
    const std::vector<Case> cases = {
        {"dev.tessik.Corvane.Slot12", WidgetAddress::slot(12)},
        {"dev.tessik.Corvane.Slot1", WidgetAddress::slot(1)},
        {"dev.tessik.Corvane.Slot0", {}},
        {"dev.tessik.Corvane.Slot13", {}},
        {"dev.tessik.Corvane.Slot", {}},
        {"dev.tessik.Corvane.Slot-1", {}},
        {"dev.tessik.Corvane.Slot3x", {}},
        {"dev.tessik.Corvane.Slot.3", {}},
        {"dev.tessik.Corvane.Widget.0a7e5c1d-2b3f-4a55-9c6d-7e8f9a0b1c2d", WidgetAddress::id(kId)},
        {"dev.tessik.Corvane.Widget.0A7E5C1D-2B3F-4A55-9C6D-7E8F9A0B1C2D", WidgetAddress::id(kId)},
        {"dev.tessik.Corvane.Widget.not-a-uuid", {}},
        {"dev.tessik.Corvane.Widget", {}},
        {"dev.tessik.Corvane", {}},
        {"com.apple.Safari", {}},
        {std::nullopt, {}},
    };
    for (const auto& c : cases) {
        std::optional<std::string_view> identifier;
        if (c.identifier) identifier = *c.identifier;
        EXPECT_EQ(WidgetAddress::fromBundleIdentifier(identifier), c.expected)
            << c.identifier.value_or("(none)");
    }
}

TEST(WidgetAddress, KeysIdentifiersAndMatching) {
    auto byId = WidgetAddress::id(kId);
    auto bySlot = WidgetAddress::slot(4);
    EXPECT_EQ(byId.key(), "0A7E5C1D-2B3F-4A55-9C6D-7E8F9A0B1C2D");
    EXPECT_EQ(bySlot.key(), "slot4");
    EXPECT_EQ(byId.bundleIdentifier(), "dev.tessik.Corvane.Widget.0A7E5C1D-2B3F-4A55-9C6D-7E8F9A0B1C2D");
    EXPECT_EQ(bySlot.bundleIdentifier(), "dev.tessik.Corvane.Slot4");
    EXPECT_EQ(WidgetAddress::fromBundleIdentifier(bySlot.bundleIdentifier()), bySlot);

    DockWidget slotted(kId, "W", 4, DockWidget::Kind());
    DockWidget unslotted(Uuid::generate(), "W", {}, DockWidget::Kind());
    EXPECT_TRUE(byId.matches(slotted));
    EXPECT_TRUE(bySlot.matches(slotted));
    EXPECT_FALSE(byId.matches(unslotted));
    EXPECT_FALSE(bySlot.matches(unslotted));
    EXPECT_FALSE(WidgetAddress::slot(5).matches(slotted));
}

TEST(DockSlot, NamesAndRecognisesItsOwnIdentifiers) {
    EXPECT_EQ(DockSlot::bundleName(3), "Corvane Slot 3.app");
    EXPECT_EQ(DockSlot::slot("dev.tessik.Corvane.Slot13"), 13);
    EXPECT_EQ(DockSlot::slot("dev.tessik.Corvane.Slot"), std::nullopt);
    EXPECT_EQ(DockSlot::widgetID(DockSlot::widgetBundleIdentifier(kId)), kId);
    EXPECT_TRUE(DockSlot::isCorvane("dev.tessik.Corvane"));
    EXPECT_TRUE(DockSlot::isCorvane("dev.tessik.Corvane.Slot99"));
    EXPECT_FALSE(DockSlot::isCorvane("dev.tessik.CorvaneHelper"));
    EXPECT_FALSE(DockSlot::isCorvane("dev.tessik.corvane"));
}

TEST(DockWidget, ConstructionUsesTheKindsDefaultSpanAndClampsAGivenOne) {
    WeatherSettings forecast;
    forecast.style = WeatherTileStyle::forecast;
    EXPECT_EQ(DockWidget(kId, "W", {}, forecast).span, 3);
    EXPECT_EQ(DockWidget(kId, "W", {}, forecast, 9).span, 4);
    EXPECT_EQ(DockWidget(kId, "W", {}, ClipboardSettings{}, 3).span, 1);
    EXPECT_EQ(DockWidget(kId, "W", {}, TimerSettings{}, 0).span, 1);
}

TEST(DockWidget, PayloadAccessorsOnlyTouchTheirOwnKind) {
    DockWidget timer(kId, "T", {}, TimerSettings{});
    ASSERT_TRUE(timer.timerSettings());
    EXPECT_FALSE(timer.pomodoroSettings());
    EXPECT_FALSE(timer.apps());
    EXPECT_FALSE(timer.collectionLayout());

    TimerSettings quick;
    quick.presets = {60};
    timer.setSettings(std::optional(quick));
    EXPECT_EQ(timer.timerSettings()->presets, std::vector<double>{60});
    timer.setSettings(std::optional<TimerSettings>());
    EXPECT_EQ(timer.timerSettings()->presets, std::vector<double>{60});
    auto before = timer;
    timer.setSettings(std::optional(PomodoroSettings{}));
    timer.setCollectionLayout(CollectionLayout::vertical);
    EXPECT_EQ(timer, before);

    DockWidget collection(kId, "C", {}, DockWidget::Collection{});
    collection.setCollectionLayout(CollectionLayout::horizontal);
    collection.setApps(std::vector<AppEntry>{{"/Applications/Mail.app", {}, {}, {}}});
    EXPECT_EQ(collection.collectionLayout(), CollectionLayout::horizontal);
    EXPECT_EQ(collection.apps()->size(), 1u);

    EXPECT_EQ(DockWidget(kId, "M", {}, MusicSettings{}).replacesApps(),
              (std::vector<std::string>{"com.apple.Music", "com.spotify.client"}));
    EXPECT_TRUE(timer.replacesApps().empty());
}
