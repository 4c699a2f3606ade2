#include "CorvaneCore/looks/IconPack.hpp"
#include "CorvaneCore/looks/IconChoices.hpp"

#include "fakes/TemporaryDirectory.hpp"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

using namespace corvane;

namespace {

std::vector<std::string> keys(const IconPack& pack) {
    std::vector<std::string> result;
    for (const auto& [key, file] : pack.icons)
        result.push_back(key);
    return result;
}

} // namespace

TEST(IconPack, KeysKeepOnlyLowerCaseLettersAndDigits) {
    for (std::string name :
         {"Visual Studio Code.app", "visual-studio-code", "VisualStudioCode", "VISUAL STUDIO CODE.APP"})
        EXPECT_EQ(IconPack::key(name), "visualstudiocode") << name;
    EXPECT_EQ(IconPack::key("com.apple.Safari"), "comapplesafari");
    EXPECT_EQ(IconPack::key("Ärger Žlutý ΔΣ Ĺadné Ŀ.app"), "ärgeržlutýδσĺadnéŀ");
    EXPECT_EQ(IconPack::key("1Password 7"), "1password7");
    EXPECT_EQ(IconPack::key(".app"), "");
    EXPECT_EQ(IconPack::key("🙂"), "");
}

TEST(IconPack, LoadsImagesByFileNameAndManifestEntriesOverThem) {
    TemporaryDirectory root;
    auto folder = root / "Flat Pack";
    for (std::string file :
         {"Safari.png", "com.google.Chrome.png", "ICON.PNG", "icon.jpg", "icon.icns", "_widget/clock.png",
          "apps/deep/Notes.png", "mail-custom.png", "Mail.png", "---.png"})
        writeText(folder / file, "png");
    writeText(root / "outside.png", "png");
    writeText(folder / "pack.json", R"({"name": "Flat", "author": "Someone", "version": "2.1", "padding": 0.6,
        "icons": {"com.apple.mail": "mail-custom.png", "Missing": "nope.png", "Escape": "../outside.png", "Bad": 3},
        "widget": {"face": "_widget/clock.png", "weight": "bold", "effect": "sparkle", "tones": {"primary": "#FFFFFF", "x": 1},
                   "bounds": {"x": 0.1, "width": 0.8}, "kinds": {"timer": "_widget/clock.png", "water": "none.png"}}})");
    auto pack = IconPack::load(folder);
    EXPECT_EQ(pack.id, "Flat Pack");
    EXPECT_EQ(pack.name, "Flat");
    EXPECT_EQ(pack.author, "Someone");
    EXPECT_EQ(pack.version, "2.1");
    EXPECT_EQ(pack.padding, 0.4);
    EXPECT_EQ(keys(pack), (std::vector<std::string>{"comapplemail", "comgooglechrome", "icon", "mail",
                                                    "mailcustom", "notes", "safari"}));
    EXPECT_EQ(pack.icons["comapplemail"], folder / "mail-custom.png");
    EXPECT_EQ(pack.icons["notes"], folder / "apps/deep/Notes.png");
    ASSERT_TRUE(pack.widgetStyle);
    EXPECT_EQ(pack.widgetStyle->face, folder / "_widget/clock.png");
    EXPECT_EQ(pack.widgetStyle->weight, WidgetStyle::Weight::bold);
    EXPECT_EQ(pack.widgetStyle->effect, WidgetStyle::Effect::none);
    EXPECT_EQ(pack.widgetStyle->tones, (std::map<std::string, std::string>{{"primary", "#FFFFFF"}}));
    EXPECT_EQ(pack.widgetStyle->bounds, (WidgetStyle::Bounds{0.1, 0, 0.8, 1}));
    EXPECT_EQ(pack.widgetStyle->kinds.size(), 1u);

    // Without a readable manifest the pack still loads from its file names.
    writeText(folder / "pack.json", "{ not json");
    auto plain = IconPack::load(folder);
    EXPECT_EQ(plain.name, "Flat Pack");
    EXPECT_EQ(plain.padding, 0);
    EXPECT_FALSE(plain.widgetStyle);
    EXPECT_EQ(plain.icons["mail"], folder / "Mail.png");
    writeText(folder / "pack.json", R"({"padding": -1, "name": 7})");
    EXPECT_EQ(IconPack::load(folder).padding, 0);
    EXPECT_EQ(IconPack::load(folder).name, "Flat Pack");
    // Manifest bytes handed in stand for the folder's own; their files are still the folder's.
    auto handed = IconPack::load(folder, R"({"name": "Handed", "icons": {"Safari": "Mail.png", "Mail": "../outside.png"}})");
    EXPECT_EQ(handed.name, "Handed");
    EXPECT_EQ(handed.icons["safari"], folder / "Mail.png");
    EXPECT_EQ(handed.icons["mail"], folder / "Mail.png");

    EXPECT_THROW(IconPack::load(root / "missing"), IconPackError);
}

TEST(IconPack, MatchesByBundleIdentifierThenNameThenTheIdentifiersLastPart) {
    IconPack pack{.id = "p", .name = "p"};
    pack.icons = {
        {"safari", "/p/Safari.png"}, {"comgooglechrome", "/p/com.google.Chrome.png"}, {"io", "/p/io.png"}};
    EXPECT_EQ(pack.iconURL("com.apple.Safari", "Safari"), std::filesystem::path("/p/Safari.png"));
    EXPECT_EQ(pack.find("com.google.Chrome", "Google Chrome")->match, IconPack::Match::bundleIdentifier);
    EXPECT_FALSE(pack.iconURL("a.b.io", "Something"));
    EXPECT_FALSE(pack.iconURL(std::nullopt, ""));

    pack.icons = {{"chrome", "/p/Chrome.png"}};
    auto found = pack.find("com.google.Chrome", "Google Chrome");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->match, IconPack::Match::bundleIdentifierLastPart);
    EXPECT_EQ(found->key, "chrome");
}

TEST(IconChoices, StoresOnlyWhatDiffersFromTheDefault) {
    using Choice = IconChoices::Choice;
    IconChoices choices;
    choices.set(Choice::original(), "com.apple.Safari");
    EXPECT_TRUE(choices.perApp.empty());
    choices.set(Choice::pack("flat"), "com.apple.Safari");
    EXPECT_EQ(choices.packID("com.apple.Safari"), "flat");
    EXPECT_EQ(choices.packID("other"), std::nullopt);

    choices.defaultPackID = "flat";
    choices.set(Choice::pack("flat"), "com.apple.Safari");
    EXPECT_TRUE(choices.perApp.empty());
    choices.set(Choice::original(), "/Applications/Tool.app");
    choices.set(Choice::pack("neon"), "com.apple.Mail");
    EXPECT_EQ(choices.packID("/Applications/Tool.app"), std::nullopt);
    EXPECT_EQ(choices.packID("com.apple.Mail"), "neon");
    EXPECT_EQ(choices.packID("anything"), "flat");

    auto json = encodeIconChoices(choices);
    EXPECT_EQ(json, nlohmann::json::parse(R"({"defaultPackID": "flat", "perApp": {
        "/Applications/Tool.app": {"original": {}}, "com.apple.Mail": {"pack": {"_0": "neon"}}}})"));
    EXPECT_EQ(decodeIconChoices(json), choices);
    auto damaged = nlohmann::json::parse(R"({"defaultPackID": 3, "perApp": {
        "a": {"pack": {"_0": 5}}, "b": {"custom": {}}, "c": [], "d": {"original": {}}}})");
    EXPECT_EQ(decodeIconChoices(damaged), (IconChoices{std::nullopt, {{"d", Choice::original()}}}));
    EXPECT_EQ(decodeIconChoices(nlohmann::json::array()), IconChoices{});
}
