#include "app/cli/ToolFixtures.hpp"

#include <gtest/gtest.h>

#include <cstdint>

using namespace corvane;

namespace {

// Width and height from a PNG's header chunk; zero when the bytes are no PNG.
std::pair<std::uint32_t, std::uint32_t> pngSize(const std::string& bytes) {
    if (bytes.size() < 24 || bytes.compare(0, 8, "\x89PNG\r\n\x1a\n") != 0 || bytes.compare(12, 4, "IHDR") != 0)
        return {0, 0};
    auto word = [&](std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
        return value;
    };
    return {word(16), word(20)};
}

} // namespace

TEST(PreviewCommand, DrawsTheNamedOrActiveWorkspaceIntoAPicture) {
    Installation here;
    here.run({"new", "Work"});
    here.run({"new", "Play"});
    here.run({"activate", "Play"});
    auto file = here.data / "bar.png";

    auto active = here.run({"preview", "--theme", "christmas", "-o", file.string()});
    ASSERT_EQ(active.status, 0) << active.err;
    EXPECT_EQ(active.out.find("Wrote " + file.string()), 0u) << active.out;
    EXPECT_NE(active.out.find("theme \"Christmas\", workspace \"Play\""), std::string::npos) << active.out;
    auto [width, height] = pngSize(readText(file));
    EXPECT_GT(width, height);
    // The window height of 48-point icons.
    EXPECT_EQ(height, 133u);

    auto side = here.run({"preview", "--workspace", "work", "--position", "left", "--width", "700", "--pointer",
                          "120", "-o", file.string()});
    ASSERT_EQ(side.status, 0) << side.err;
    EXPECT_NE(side.out.find("workspace \"Work\""), std::string::npos);
    EXPECT_EQ(pngSize(readText(file)), std::make_pair(133u, 700u));

    // A short screen shrinks the icons, and so the window.
    auto narrow = here.run({"preview", "--width", "150", "-o", file.string()});
    ASSERT_EQ(narrow.status, 0) << narrow.err;
    auto [narrowWidth, narrowHeight] = pngSize(readText(file));
    EXPECT_EQ(narrowWidth, 150u);
    EXPECT_LT(narrowHeight, 133u);

    auto bigger = here.run({"preview", "--size", "64", "-o", file.string()});
    ASSERT_EQ(bigger.status, 0) << bigger.err;
    EXPECT_GT(pngSize(readText(file)).second, 133u);
}

TEST(PreviewCommand, TheStoredStyleAndIconChoicesDrawUnlessTheOptionsSayOtherwise) {
    Installation here;
    here.run({"new", "Work"});
    auto file = here.data / "bar.png";
    auto stored = here.run({"prefs", "set", "dockStyle", R"({"themeID": "christmas", "position": "left"})"});
    ASSERT_EQ(stored.status, 0) << stored.err;

    auto styled = here.run({"preview", "-o", file.string()});
    ASSERT_EQ(styled.status, 0) << styled.err;
    EXPECT_NE(styled.out.find("theme \"Christmas\""), std::string::npos) << styled.out;
    auto [sideWidth, sideHeight] = pngSize(readText(file));
    EXPECT_LT(sideWidth, sideHeight);

    auto plain = here.run({"preview", "--theme", "native", "--position", "bottom", "-o", file.string()});
    ASSERT_EQ(plain.status, 0) << plain.err;
    EXPECT_NE(plain.out.find("theme \"Native\""), std::string::npos) << plain.out;
    auto original = readText(file);
    EXPECT_GT(pngSize(original).first, pngSize(original).second);

    // A pack with a Finder icon changes the picture when it is named, and only then.
    auto icon = here.data / "finder.png";
    writeText(icon, original);
    writeText(here.data / "IconPacks/Mono/pack.json", R"({"name": "Monochrome"})");
    std::filesystem::copy_file(icon, here.data / "IconPacks/Mono/Finder.png");
    auto unchosen = here.run({"preview", "--theme", "native", "--position", "bottom", "-o", file.string()});
    ASSERT_EQ(unchosen.status, 0) << unchosen.err;
    EXPECT_EQ(readText(file), original);
    auto packed = here.run({"preview", "--theme", "native", "--position", "bottom", "--icon-pack", "Mono", "-o",
                            file.string()});
    ASSERT_EQ(packed.status, 0) << packed.err;
    EXPECT_NE(packed.out.find("icon pack \"Monochrome\")"), std::string::npos) << packed.out;
    EXPECT_NE(readText(file), original);

    // Something in the Trash shows in the picture.
    writeText(here.data / ".Trash/old draft.txt", "gone");
    auto trash = here.run({"preview", "--theme", "native", "--position", "bottom", "-o", file.string()});
    ASSERT_EQ(trash.status, 0) << trash.err;
    EXPECT_NE(readText(file), original);
}

TEST(PreviewCommand, BadOptionsWriteNothing) {
    Installation here;
    here.run({"new", "Work"});
    auto file = here.data / "bar.png";
    writeText(file, "an older picture");
    struct Case {
        std::vector<std::string> options;
        int status;
        std::string error;
    };
    std::vector<Case> cases = {
        {{"--theme", "Christmas"}, 2, "unknown theme \"Christmas\" (choose one of native, liquid, midnight"},
        {{"--position", "top"}, 2, "unknown position \"top\" (choose bottom, left or right)"},
        {{"--size", "8"}, 2, "--size must be between 16 and 128 points"},
        {{"--width", "0"}, 2, "--width must be between 1 and 8192 points"},
        {{"--effect", "wobble"}, 2, "unknown effect \"wobble\" (choose none, scale or magnify)"},
        {{"--pointer", "inf"}, 2, "--pointer must be a number of points"},
        {{"--workspace", "Nope"}, 1, "no workspace matches \"Nope\""},
        {{"--icon-pack", "Mono"}, 2, "unknown icon pack \"Mono\" (no icon packs are installed)"},
    };
    for (const auto& c : cases) {
        auto arguments = c.options;
        arguments.insert(arguments.begin(), "preview");
        arguments.insert(arguments.end(), {"-o", file.string()});
        auto result = here.run(arguments);
        EXPECT_EQ(result.status, c.status) << c.error;
        EXPECT_EQ(result.err.rfind("corvane: " + c.error, 0), 0u) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_EQ(readText(file), "an older picture");
    }
}

TEST(IconCommand, DrawsAnAppsIconAsTheBarDoesToAFileOrStandardOutput) {
    Installation here;
    auto app = (here.data / "Safari.app").string();
    writeText(here.data / "Safari.app/Contents/Info.plist",
              "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>com.apple.Safari</string>"
              "</dict></plist>");

    auto placeholder = here.run({"icon", app, "--size", "64", "-o", "-"});
    ASSERT_EQ(placeholder.status, 0) << placeholder.err;
    EXPECT_EQ(pngSize(placeholder.out), std::make_pair(64u, 64u));

    // A pack's icon is drawn instead of the placeholder made from the name.
    std::filesystem::create_directories(here.data / "IconPacks/mono");
    writeText(here.data / "IconPacks/mono/pack.json", R"({"name": "Mono", "padding": 0})");
    auto packIcon = (here.data / "IconPacks/mono/com.apple.Safari.png").string();
    ASSERT_EQ(here.run({"icon", app, "--size", "32", "-o", packIcon}).status, 0);
    auto drawn = here.run({"icon", app, "--icon-pack", "mono", "-o", (here.data / "icon.png").string()});
    ASSERT_EQ(drawn.status, 0) << drawn.err;
    EXPECT_EQ(drawn.out, "Wrote " + (here.data / "icon.png").string() + " (128×128, the icon of \"Safari\").\n");
    EXPECT_EQ(pngSize(readText(here.data / "icon.png")), std::make_pair(128u, 128u));

    for (auto arguments : {std::vector<std::string>{"icon", app, "--size", "8", "-o", "-"},
                           {"icon", app, "-o", " "},
                           {"icon", app, "--icon-pack", "neon", "-o", "-"}}) {
        auto refused = here.run(arguments);
        EXPECT_EQ(refused.status, 2) << refused.err;
        EXPECT_EQ(refused.out, "");
    }
}

TEST(PreviewCommand, ADashWritesThePictureToStandardOutput) {
    Installation here;
    auto result = here.run({"preview", "-o", "-"});
    ASSERT_EQ(result.status, 0) << result.err;
    auto [width, height] = pngSize(result.out);
    EXPECT_GT(width, height);
    EXPECT_GT(height, 0u);
}
