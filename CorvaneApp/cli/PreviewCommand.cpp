#include "CorvaneApp/cli/PreviewCommand.hpp"
#include "CorvaneApp/cli/LiveReaders.hpp"

#include "CorvaneApp/bar/BarContent.hpp"

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/cli/WorkspaceArgument.hpp"
#include "CorvaneApp/render/BarLayout.hpp"
#include "CorvaneApp/looks/AppBundle.hpp"
#include "CorvaneApp/looks/IconOverrides.hpp"
#include "CorvaneApp/preferences/AppPreferences.hpp"
#include "CorvaneApp/render/BarIcons.hpp"
#include "CorvaneApp/render/BarRenderer.hpp"
#include "CorvaneApp/render/WorkspaceBarScene.hpp"
#include "CorvaneCore/bar/DockFit.hpp"
#include "CorvaneCore/bar/DownloadsTile.hpp"
#include "CorvaneCore/bar/TrashFolders.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneStorage/storage/AtomicFile.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"

#include <CLI/CLI.hpp>

#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <ostream>

namespace corvane {

namespace {

struct Arguments {
    std::optional<std::string> workspace;
    std::optional<std::string> theme;
    std::optional<double> pointer;
    std::optional<std::string> position;
    std::optional<std::string> effect;
    std::optional<double> size;
    std::optional<double> width;
    std::optional<std::string> iconPack;
    double time = 0;
    bool backdrop = false;
    std::string output;
};

// Larger pictures are surely a slip of the keyboard, and would take memory for nothing.
constexpr double largestWidth = 8192;

std::string themeIDs() {
    std::string list;
    for (const auto* themes : {&DockTheme::all(), &DockTheme::seasonal()})
        for (const auto& theme : *themes) list += (list.empty() ? "" : ", ") + theme.id;
    return list;
}

bool isKnownTheme(const std::string& id) {
    return DockTheme::named(id).id == id;
}

// Options go over the stored style, and each is checked before anything is drawn, so a bad
// option costs nothing.
DockStyle styleFrom(const Arguments& args, DockStyle style) {
    if (args.theme) {
        if (!isKnownTheme(*args.theme))
            throw UsageError("unknown theme \"" + *args.theme + "\" (choose one of " + themeIDs() + ")");
        style.themeID = *args.theme;
    }
    if (args.position) {
        auto position = dockPositionFromRaw(text::lowercased(*args.position));
        if (!position) throw UsageError("unknown position \"" + *args.position + "\" (choose bottom, left or right)");
        style.position = *position;
    }
    if (args.effect) {
        auto effect = hoverEffectFromRaw(text::lowercased(*args.effect));
        if (!effect) throw UsageError("unknown effect \"" + *args.effect + "\" (choose none, scale or magnify)");
        style.hoverEffect = *effect;
    }
    if (args.size) {
        if (!std::isfinite(*args.size) || !DockStyle::iconSizeRange.contains(*args.size))
            throw UsageError("--size must be between 16 and 128 points");
        style.iconSize = *args.size;
    }
    return style;
}

const IconPack* packFrom(const Arguments& args, const IconOverrides& overrides) {
    if (!args.iconPack) return nullptr;
    if (const auto* pack = overrides.pack(*args.iconPack)) return pack;
    std::string installed;
    for (const auto& pack : overrides.packs()) installed += (installed.empty() ? "" : ", ") + pack.id;
    throw UsageError("unknown icon pack \"" + *args.iconPack + "\" (" +
                     (installed.empty() ? std::string("no icon packs are installed") : "choose one of " + installed) +
                     ")");
}

// The tiles of a workspace on a Mac where only the Finder runs: the picture cannot know which
// applications will be running, and the Finder always is.
std::vector<BarTile> tilesOf(const Profile* shown, const WidgetsFile& widgets, const DockStyle& style,
                             ToolContext& context, BarIconSource icons) {
    const RunningApp finder{.pid = 1,
                            .bundleIdentifier = WorkspaceDockLayout::finder().bundleIdentifier,
                            .name = "Finder"};
    WorkspaceDockLayout layout({.active = shown,
                                .running = std::span(&finder, 1),
                                .addsLauncher = style.showsLauncher,
                                .slotOwners = slotOwners(widgets)});
    const auto& environment = context.services.environment;
    auto trash = TrashFolders::home(environment);
    auto folders = context.services.volumes ? TrashFolders::all(trash, *context.services.volumes, ::getuid())
                                            : std::vector<std::filesystem::path>{trash};
    // Each widget of the workspace draws what its live model reads now.
    std::map<Uuid, std::string> captions;
    if (shown) {
        ProfilesFile only;
        only.profiles.push_back(*shown);
        for (auto& [widget, reading] : readWidgetsNow(context, placedWidgets(widgets, only)))
            captions[widget.id] = reading.trouble ? *reading.trouble : reading.caption;
    }
    return workspaceBarTiles(layout, {.widgets = widgets,
                                      .style = style,
                                      .downloads = DownloadsTile::folder(environment).string(),
                                      .trashIsFull = TrashFolders::isFull(folders),
                                      .icons = std::move(icons),
                                      .captions = [&captions](const Uuid& id) -> std::optional<std::string> {
                                          auto found = captions.find(id);
                                          if (found == captions.end()) return std::nullopt;
                                          return found->second;
                                      }});
}

void checkGeometry(const Arguments& args) {
    if (args.width && (!std::isfinite(*args.width) || *args.width < 1 || *args.width > largestWidth))
        throw UsageError("--width must be between 1 and " + std::to_string(static_cast<int>(largestWidth)) + " points");
    if (args.pointer && !std::isfinite(*args.pointer)) throw UsageError("--pointer must be a number of points");
    if (!std::isfinite(args.time)) throw UsageError("--time must be a number of seconds");
    if (text::trimmed(args.output).empty()) throw UsageError("-o needs a file name");
}

struct IconArguments {
    std::string app;
    int size = 128;
    std::optional<std::string> iconPack;
    std::string output;
};

// Beyond this an icon is no longer an icon, and the picture would take memory for nothing.
constexpr int largestIcon = 1024;

void drawIcon(ToolContext& context, const IconArguments& args) {
    if (args.size < 16 || args.size > largestIcon)
        throw UsageError("--size must be 16 to " + std::to_string(largestIcon) + " pixels, not " +
                         std::to_string(args.size));
    if (text::trimmed(args.output).empty()) throw UsageError("-o needs a file name, or - for standard output");
    if (text::trimmed(args.app).empty()) throw UsageError("icon needs an application's path");
    auto path = std::filesystem::absolute(args.app).lexically_normal().string();
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();

    IconOverrides overrides(context.dataDirectory());
    Arguments packOnly;
    packOnly.iconPack = args.iconPack;
    const auto* pack = packFrom(packOnly, overrides);
    auto bundle = AppBundle::read(path);
    BarTile tile{.kind = BarTile::Kind::app, .label = bundle.bundleName.value_or(bundle.name)};
    tile.image = barIcons(overrides, pack)(path);
    auto style = AppPreferences(*context.openDefaults()).load().dockStyle;
    auto png = encodePNG(rasterizeTile(tile, args.size, style.trashIcon));
    if (args.output == "-") {
        context.out << png;
        return;
    }
    writeFileAtomically(args.output, png);
    context.out << "Wrote " << args.output << " (" << args.size << "×" << args.size << ", "
                << (tile.image ? "the icon of \"" : "a placeholder for \"") << tile.label << "\").\n";
}

} // namespace

std::string widgetTilePNG(ToolContext& context, const DockWidget& widget, int size) {
    auto rows = readWidgetsNow(context, {widget});
    const auto& reading = rows.front().reading;
    BarTile tile{.kind = BarTile::Kind::widget,
                 .label = widget.name,
                 .widgetKind = widget.kind.which(),
                 .caption = reading.trouble ? *reading.trouble : reading.caption};
    auto style = AppPreferences(*context.openDefaults()).load().dockStyle;
    return encodePNG(rasterizeTile(tile, size, style.trashIcon));
}

void addPreviewCommand(CLI::App& app, ToolContext& context) {
    auto args = std::make_shared<Arguments>();
    auto* preview = app.add_subcommand("preview", "Draw the own Dock bar as a workspace would show it, as a PNG");
    preview->add_option("--workspace", args->workspace, "The workspace to show (default: the active one)");
    preview->add_option("--theme", args->theme, "A theme id (default: the stored style's)");
    preview->add_option("--pointer", args->pointer, "The pointer's place along the bar, in points from the picture's left (top, on a side)");
    preview->add_option("--position", args->position, "bottom, left or right (default: the stored style's)");
    preview->add_option("--effect", args->effect, "What icons do under the pointer: none, scale or magnify");
    preview->add_option("--size", args->size, "Icon size in points, 16 to 128 (default: the stored style's, else 48)");
    preview->add_option("--width", args->width, "The screen's length along the bar; icons shrink to fit it");
    preview->add_option("--icon-pack", args->iconPack, "Draw the icons of this installed pack instead of the chosen ones");
    preview->add_option("--time", args->time, "The moment of the seasonal animations, in seconds");
    preview->add_flag("--backdrop", args->backdrop, "Paint a desktop behind the bar");
    preview->add_option("-o,--output", args->output, "The PNG file to write, - for standard output")->required();
    auto iconArgs = std::make_shared<IconArguments>();
    auto* icon = app.add_subcommand("icon", "An application's icon as the own Dock bar draws it, as a PNG");
    icon->add_option("APP", iconArgs->app, "The application bundle (.app)")->required();
    icon->add_option("--size", iconArgs->size, "Its width and height in pixels, 16 to 1024 (default 128)");
    icon->add_option("--icon-pack", iconArgs->iconPack, "Draw this installed pack's icon instead of the chosen one");
    icon->add_option("-o,--output", iconArgs->output, "The PNG file to write, - for standard output")->required();
    icon->callback([&context, iconArgs] { drawIcon(context, *iconArgs); });

    preview->callback([&context, args] {
        auto defaults = context.openDefaults();
        auto style = styleFrom(*args, AppPreferences(*defaults).load().dockStyle);
        checkGeometry(*args);

        auto directory = context.dataDirectory();
        IconOverrides overrides(directory);
        const auto* pack = packFrom(*args, overrides);
        ProfileStore profiles(StoragePath::profilesFileURL(directory));
        WidgetStore widgets(StoragePath::widgetsFileURL(directory));
        const auto& file = profiles.file();
        const Profile* active = file.activeProfileId ? profiles.profile(*file.activeProfileId) : nullptr;
        const Profile* shown = args->workspace ? &resolveWorkspace(file.profiles, *args->workspace) : active;

        auto appearance = style.applied(DockAppearance::systemDefault());
        auto tiles = tilesOf(shown, widgets.file(), style, context, barIcons(overrides, pack));
        auto scene = makeBarScene(std::move(tiles), style, appearance, shown);
        if (args->width) scene = fittedScene(std::move(scene), style, appearance, shown, *args->width);

        BarLayout layout(scene, args->width);
        DockLens lens;
        if (args->pointer) {
            lens.follow(*args->pointer);
            // Long enough for both springs to come to rest.
            for (int i = 0; i < 100 && !lens.isSettled(); ++i) lens.step(0.1);
        }
        auto image = rasterizeBar(scene, layout, layout.frame(lens), {.seconds = args->time, .backdrop = args->backdrop});
        if (args->output == "-") {
            context.out << encodePNG(image);
            return;
        }
        writeFileAtomically(args->output, encodePNG(image));

        context.out << "Wrote " << args->output << " (" << image.width << "×" << image.height << ", theme \""
                    << scene.theme.name << "\"";
        if (pack) context.out << ", icon pack \"" << pack->name << "\"";
        if (shown) context.out << ", workspace \"" << shown->name << "\"";
        context.out << ").\n";
    });
}

} // namespace corvane
