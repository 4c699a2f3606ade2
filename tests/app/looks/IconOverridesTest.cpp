#include "CorvaneApp/looks/AppBundle.hpp"
#include "CorvaneApp/looks/IconOverrides.hpp"

#include "fakes/TemporaryDirectory.hpp"

#include "CorvaneApp/render/Cairo.hpp"

#include <gtest/gtest.h>

#include <cstring>

using namespace corvane;

namespace {

void writePNG(const std::filesystem::path& file, int width, int height) {
    std::filesystem::create_directories(file.parent_path());
    auto* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    auto* cr = cairo_create(surface);
    cairo_set_source_rgb(cr, 1, 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_write_to_png(surface, file.c_str());
    cairo_surface_destroy(surface);
}

std::string bundle(const std::filesystem::path& apps, const std::string& name,
                   std::optional<std::string> identifier) {
    auto path = apps / (name + ".app");
    std::filesystem::create_directories(path);
    if (identifier)
        writeText(path / "Contents/Info.plist", R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>CFBundleIdentifier</key><string>)" +
                                                    *identifier + "</string></dict></plist>");
    return path.string();
}

/// The alpha of one pixel of an ARGB32 surface.
int alphaAt(const IconImage& image, int x, int y) {
    cairo_surface_flush(image.surface());
    auto* data = cairo_image_surface_get_data(image.surface());
    auto stride = cairo_image_surface_get_stride(image.surface());
    std::uint32_t pixel;
    std::memcpy(&pixel, data + y * stride + x * 4, 4);
    return static_cast<int>(pixel >> 24);
}

struct Installation {
    TemporaryDirectory root;
    std::filesystem::path data = root / "data";
    std::string safari, chrome, tool;

    Installation() {
        writePNG(data / "IconPacks/flat/Safari.png", 8, 8);
        writeText(data / "IconPacks/flat/Google Chrome.png", "not a png");
        writeText(data / "IconPacks/flat/pack.json", R"({"name": "Flat", "padding": 0.25})");
        writePNG(data / "IconPacks/neon/Chrome.png", 8, 4);
        writePNG(data / "IconPacks/neon/_widget/face.png", 4, 4);
        writeText(data / "IconPacks/neon/pack.json", R"({"widget": {"face": "_widget/face.png"}})");
        writeText(data / "IconPacks/stray-file.png", "");
        safari = bundle(root / "Apps", "Safari", "com.apple.Safari");
        chrome = bundle(root / "Apps", "Google Chrome", "com.google.Chrome");
        tool = bundle(root / "Apps", "Tool", std::nullopt);
    }
};

} // namespace

TEST(IconOverrides, PacksChosenForAllOrOneAppGiveFinishedImages) {
    Installation installation;
    IconOverrides overrides(installation.data);
    ASSERT_EQ(overrides.packs().size(), 2u);
    EXPECT_EQ(overrides.widgetThemes().size(), 1u);
    EXPECT_TRUE(overrides.widgetThemes().contains("neon"));
    EXPECT_FALSE(overrides.image(installation.safari));
    EXPECT_EQ(overrides.resolve(installation.safari).reason, IconOverrides::Resolution::Reason::noPackChosen);

    auto revision = overrides.revision();
    overrides.useForAllApps("flat");
    EXPECT_GT(overrides.revision(), revision);
    auto safari = overrides.image(installation.safari);
    ASSERT_TRUE(safari);
    // Redrawn on a 512-point canvas with a quarter of it left empty on every side.
    EXPECT_EQ(safari->width(), 512);
    EXPECT_EQ(alphaAt(*safari, 256, 256), 255);
    EXPECT_EQ(alphaAt(*safari, 100, 256), 0);
    EXPECT_EQ(alphaAt(*safari, 160, 256), 255);
    EXPECT_EQ(alphaAt(*safari, 256, 412), 0);
    // The flat pack's Chrome image does not decode: the system icon is drawn.
    EXPECT_FALSE(overrides.image(installation.chrome));
    EXPECT_EQ(overrides.resolve(installation.tool).reason, IconOverrides::Resolution::Reason::noIconInPack);

    overrides.select(IconOverrides::Selection::pack("neon"), installation.chrome);
    auto chrome = overrides.image(installation.chrome);
    ASSERT_TRUE(chrome);
    EXPECT_EQ(chrome->width(), 8); // no padding asked, drawn as it is
    EXPECT_EQ(overrides.resolve(installation.chrome).match, IconPack::Match::bundleIdentifierLastPart);
    overrides.select(IconOverrides::Selection::custom(), installation.safari);
    EXPECT_FALSE(overrides.image(installation.safari));

    IconOverrides reopened(installation.data);
    EXPECT_EQ(reopened.choices(), overrides.choices());
    EXPECT_EQ(reopened.selection(installation.chrome), IconOverrides::Selection::pack("neon"));
    EXPECT_EQ(reopened.selection(installation.safari), IconOverrides::Selection::original());
    EXPECT_EQ(reopened.selection(installation.tool), IconOverrides::Selection::pack("flat"));
    auto covering = reopened.packsCovering(installation.chrome);
    ASSERT_EQ(covering.size(), 2u); // flat names it, even though its image is broken
    overrides.useForAllApps(std::nullopt);
    EXPECT_EQ(overrides.choices().perApp.size(), 2u);

    // A choice of a pack that is gone stays stored and draws the system icon.
    std::filesystem::remove_all(installation.data / "IconPacks/neon");
    reopened.reload();
    EXPECT_EQ(reopened.resolve(installation.chrome).reason,
              IconOverrides::Resolution::Reason::packNotInstalled);
}

TEST(IconOverrides, CustomIconsWinAndSurviveAReload) {
    Installation installation;
    IconOverrides overrides(installation.data);
    overrides.useForAllApps("flat");
    writePNG(installation.root / "mine.png", 6, 6);
    writeText(installation.root / "mine.txt", "not an image");

    EXPECT_THROW(overrides.setCustomIcon(installation.tool, installation.root / "mine.txt"),
                 std::runtime_error);
    EXPECT_FALSE(std::filesystem::exists(installation.data / "CustomIcons"));

    overrides.setCustomIcon(installation.tool, installation.root / "mine.png");
    overrides.setCustomIcon(installation.safari, installation.root / "mine.png");
    auto image = overrides.image(installation.safari);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width(), 6); // the user's own picture, never padded

    IconOverrides reopened(installation.data);
    EXPECT_EQ(reopened.selection(installation.tool), IconOverrides::Selection::custom());
    EXPECT_EQ(reopened.customIcons().size(), 2u);
    EXPECT_TRUE(reopened.customIcons().contains(installation.tool));

    reopened.removeCustomIcon("com.apple.Safari");
    EXPECT_EQ(reopened.selection(installation.safari), IconOverrides::Selection::pack("flat"));
    reopened.restoreSystemIcons();
    EXPECT_TRUE(reopened.customIcons().empty());
    EXPECT_EQ(reopened.choices(), IconChoices{});
    EXPECT_TRUE(std::filesystem::is_empty(installation.data / "CustomIcons"));
    IconOverrides again(installation.data);
    EXPECT_FALSE(again.image(installation.tool));
}

TEST(AppBundle, TheNameDropsOnlyAnAppExtension) {
    EXPECT_EQ(AppBundle::read("/Applications/Safari.app").name, "Safari");
    EXPECT_EQ(AppBundle::read("/Applications/Tool.APP").name, "Tool");
    EXPECT_EQ(AppBundle::read("/usr/local/bin/ripgrep").name, "ripgrep");
    EXPECT_EQ(AppBundle::read("/Volumes/x/.app").name, ".app");
}
