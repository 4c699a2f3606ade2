#include "CorvaneApp/cli/TileCommands.hpp"

#include "CorvaneApp/cli/TextColumns.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/cli/WorkspaceArgument.hpp"
#include "CorvaneApp/looks/AppBundle.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <ostream>

namespace corvane {

namespace {

std::string inQuotes(const std::string& text) {
    return "\"" + text + "\"";
}

/// Tiles are numbered from 1 through the apps section and on through the others, as the Dock
/// shows them left to right; a tile never leaves its section.
struct Sections {
    std::size_t apps, others;

    bool inApps(std::size_t index) const { return index <= apps; }
    std::size_t count() const { return apps + others; }
    /// The places a tile of that section may take, once it is in.
    std::pair<std::size_t, std::size_t> places(bool appsSection, std::size_t added) const {
        return appsSection ? std::pair{std::size_t{1}, apps + added}
                           : std::pair{apps + 1, apps + others + added};
    }
};

Sections sectionsOf(const Profile& profile) {
    return {profile.items.size(), profile.others.size()};
}

const DockItem& tileAt(const Profile& profile, std::size_t index) {
    return index <= profile.items.size() ? profile.items[index - 1]
                                         : profile.others[index - 1 - profile.items.size()];
}

std::size_t checkedIndex(const Profile& profile, long long index, const char* what) {
    auto count = sectionsOf(profile).count();
    if (count == 0) throw UsageError(inQuotes(profile.name) + " has no tiles");
    if (index < 1 || static_cast<std::size_t>(index) > count)
        throw UsageError(std::string(what) + " must be a tile of " + inQuotes(profile.name) + ", 1 to " +
                         std::to_string(count) + ", not " + std::to_string(index));
    return static_cast<std::size_t>(index);
}

bool isWidgetPlace(const DockItem& item) {
    auto app = item.app();
    return app && app->bundleIdentifier &&
           (DockSlot::widgetID(*app->bundleIdentifier) || DockSlot::slot(*app->bundleIdentifier));
}

/// The widget whose place the item holds; none for other items and for places of widgets gone.
const DockWidget* widgetAt(const DockItem& item, const std::vector<DockWidget>& widgets) {
    if (!isWidgetPlace(item)) return nullptr;
    const auto& identifier = *item.app()->bundleIdentifier;
    auto id = DockSlot::widgetID(identifier);
    auto slot = DockSlot::slot(identifier);
    auto found = std::find_if(widgets.begin(), widgets.end(), [&](const DockWidget& widget) {
        return id ? widget.id == *id : widget.slot == slot;
    });
    return found == widgets.end() ? nullptr : &*found;
}

std::string nameOf(const DockItem& item, const std::vector<DockWidget>& widgets) {
    const auto* widget = widgetAt(item, widgets);
    return widget ? widget->name : item.displayName();
}

std::string kindOf(const DockItem& item) {
    if (item.app()) return isWidgetPlace(item) ? "widget" : "app";
    if (auto spacer = item.spacer()) {
        switch (*spacer) {
        case SpacerVariant::small:
            return "smallSpacer";
        case SpacerVariant::flex:
            return "flexSpacer";
        case SpacerVariant::default_:
            return "spacer";
        }
    }
    if (auto file = item.file()) return file->isDirectory ? "folder" : "file";
    return "link";
}

std::string whereOf(const DockItem& item) {
    if (auto app = item.app()) return app->path;
    if (auto file = item.file()) return file->path;
    if (auto url = item.url()) return url->url;
    return "";
}

Json tileJson(const DockItem& item, std::size_t index, bool inApps, const std::vector<DockWidget>& widgets) {
    Json tile = {{"index", index},
                 {"section", inApps ? "apps" : "others"},
                 {"kind", kindOf(item)},
                 {"name", nameOf(item, widgets)},
                 {"item", encodeDockItem(item)}};
    if (const auto* widget = widgetAt(item, widgets)) tile["widget"] = widget->id.string();
    if (auto app = item.app()) {
        tile["path"] = app->path;
        if (app->bundleIdentifier) tile["bundleIdentifier"] = *app->bundleIdentifier;
    } else if (auto file = item.file()) {
        tile["path"] = file->path;
    } else if (auto url = item.url()) {
        tile["url"] = url->url;
    }
    return tile;
}

void printTiles(const Profile& profile, const std::vector<DockWidget>& widgets, std::ostream& out) {
    auto sections = sectionsOf(profile);
    out << profile.name << ": " << sections.apps << (sections.apps == 1 ? " app tile, " : " app tiles, ")
        << sections.others << (sections.others == 1 ? " other" : " others") << "\n";
    std::size_t nameWidth = 4, kindWidth = 4, indexWidth = std::to_string(sections.count()).size();
    for (std::size_t i = 1; i <= sections.count(); ++i) {
        nameWidth = std::max(nameWidth, displayWidth(nameOf(tileAt(profile, i), widgets)));
        kindWidth = std::max(kindWidth, kindOf(tileAt(profile, i)).size());
    }
    for (std::size_t i = 1; i <= sections.count(); ++i) {
        if (i == sections.apps + 1 && sections.apps > 0) out << "  --\n";
        const auto& item = tileAt(profile, i);
        auto line = rightAligned(std::to_string(i), indexWidth) + "  " + padded(kindOf(item), kindWidth) +
                    "  " + padded(nameOf(item, widgets), nameWidth) + "  " +
                    (isWidgetPlace(item) ? "" : whereOf(item));
        while (line.ends_with(' '))
            line.pop_back();
        out << "  " << line << "\n";
    }
}

std::optional<SpacerVariant> parseSpacer(const std::string& text) {
    auto name = text::lowercased(text::trimmed(text));
    if (name.empty() || name == "spacer" || name == "default") return SpacerVariant::default_;
    if (name == "small" || name == "smallspacer") return SpacerVariant::small;
    if (name == "flex" || name == "flexspacer") return SpacerVariant::flex;
    return spacerVariantFromRaw(name);
}

/// An absolute path without a trailing slash: the Dock keeps tiles by absolute paths.
std::string absolutePath(const std::string& text, const char* option) {
    if (text::trimmed(text).empty()) throw UsageError(std::string(option) + " needs a path");
    auto path = std::filesystem::absolute(std::filesystem::path(text)).lexically_normal().string();
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

struct AddOptions {
    std::optional<std::string> app, folder, file, link;
    std::string spacer;
    CLI::Option* spacerOption = nullptr;
    std::optional<long long> at;
};

DockItem newTile(const AddOptions& add) {
    int given = add.app.has_value() + add.folder.has_value() + add.file.has_value() + add.link.has_value() +
                (add.spacerOption->count() > 0);
    if (given != 1) throw UsageError("give one of --app, --folder, --file, --link or --spacer");
    if (add.app) {
        auto path = absolutePath(*add.app, "--app");
        if (!text::lowercased(path).ends_with(".app"))
            throw UsageError("--app takes an application bundle, a path ending in .app, not " +
                             inQuotes(*add.app));
        auto bundle = AppBundle::read(path);
        return AppEntry{path, bundle.bundleIdentifier, bundle.name, std::nullopt};
    }
    if (add.folder || add.file) {
        auto path = absolutePath(add.folder ? *add.folder : *add.file, add.folder ? "--folder" : "--file");
        return FileEntry{path, text::lastPathComponent(path), add.folder.has_value(), std::nullopt,
                         std::nullopt};
    }
    if (add.link) {
        auto url = std::string(text::trimmed(*add.link));
        auto colon = url.find(':');
        bool hasScheme =
            colon != std::string::npos && colon > 0 &&
            std::all_of(url.begin(), url.begin() + static_cast<std::ptrdiff_t>(colon), [](char c) {
                return std::isalnum(static_cast<unsigned char>(c)) || c == '+' || c == '-' || c == '.';
            });
        if (!hasScheme || colon + 1 == url.size())
            throw UsageError("--link takes a URL with its scheme, like https://example.com, not " +
                             inQuotes(*add.link));
        return URLEntry{url, std::nullopt, std::nullopt};
    }
    auto spacer = parseSpacer(add.spacer);
    if (!spacer) throw UsageError("--spacer takes spacer, small or flex, not " + inQuotes(add.spacer));
    return *spacer;
}

std::size_t adding(Profile& profile, DockItem item, std::optional<long long> at) {
    auto sections = sectionsOf(profile);
    bool inApps = item.belongsInAppsSection();
    auto [first, last] = sections.places(inApps, 1);
    if (auto app = item.app()) {
        auto same = std::find_if(profile.items.begin(), profile.items.end(), [&](const DockItem& each) {
            return each.app() && each.app()->path == app->path;
        });
        if (same != profile.items.end())
            throw std::runtime_error(inQuotes(item.displayName()) + " is already tile " +
                                     std::to_string(same - profile.items.begin() + 1) + " of " +
                                     inQuotes(profile.name));
    }
    auto place = at.value_or(static_cast<long long>(last));
    if (place < static_cast<long long>(first) || place > static_cast<long long>(last))
        throw UsageError(
            "--at must be " + std::to_string(first) + " to " + std::to_string(last) + " for " +
            (inApps ? "an app or spacer, in the apps section" : "a folder, file or link, in the others") +
            ", not " + std::to_string(place));
    auto index = static_cast<std::size_t>(place);
    auto& list = inApps ? profile.items : profile.others;
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(index - first), std::move(item));
    return index;
}

struct Arguments {
    bool json = false;
    std::string workspace;
    AddOptions add;
    long long index = 0, from = 0, to = 0;
};

ProfileStore openStore(ToolContext& context) {
    return ProfileStore(StoragePath::profilesFileURL(context.dataDirectory()), &context.services.notifier);
}

} // namespace

void addTileCommands(CLI::App& app, ToolContext& context) {
    auto& out = context.out;
    auto args = std::make_shared<Arguments>();

    auto* tiles = app.add_subcommand(
        "tiles", "A workspace's tiles, numbered from 1 through the apps and on through the others");
    tiles->add_option("WORKSPACE", args->workspace, "Id or name");
    tiles->add_flag("--json", args->json, "Print each tile with its index, section, kind, name and item");
    tiles->callback([&context, &out, args, tiles] {
        if (!tiles->get_subcommands().empty()) return;
        if (args->workspace.empty()) throw UsageError("tiles needs a WORKSPACE");
        auto store = openStore(context);
        const auto& profile = resolveWorkspace(store.file().profiles, args->workspace);
        WidgetStore widgetStore(StoragePath::widgetsFileURL(context.dataDirectory()));
        const auto& widgets = widgetStore.file().widgets;
        if (!args->json) return printTiles(profile, widgets, out);
        auto list = Json::array();
        auto sections = sectionsOf(profile);
        for (std::size_t i = 1; i <= sections.count(); ++i)
            list.push_back(tileJson(tileAt(profile, i), i, sections.inApps(i), widgets));
        out << prettyJson(Json{{"workspace", profile.id.string()}, {"tiles", std::move(list)}});
    });

    auto* add = tiles->add_subcommand(
        "add", "Add a tile: apps and spacers join the apps section, folders, files and links the others");
    add->add_option("WORKSPACE", args->workspace, "Id or name")->required();
    add->add_option("--app", args->add.app, "An application bundle (.app)");
    add->add_option("--folder", args->add.folder, "A folder");
    add->add_option("--file", args->add.file, "A file");
    add->add_option("--link", args->add.link, "A URL, like https://example.com");
    args->add.spacerOption =
        add->add_option("--spacer", args->add.spacer, "A spacer: spacer (the default), small or flex")
            ->expected(0, 1);
    add->add_option("--at", args->add.at,
                    "Its place as tiles numbers them (default: the end of its section)");
    add->callback([&context, &out, args] {
        auto item = newTile(args->add);
        auto store = openStore(context);
        auto profile = resolveWorkspace(store.file().profiles, args->workspace);
        auto name = item.displayName();
        auto index = adding(profile, std::move(item), args->add.at);
        store.update(profile);
        context.made["index"] = std::to_string(index);
        out << "Added " << inQuotes(name) << " to " << inQuotes(profile.name) << " as tile " << index
            << ".\n";
    });

    auto* remove = tiles->add_subcommand("remove", "Take a tile out of a workspace");
    remove->add_option("WORKSPACE", args->workspace, "Id or name")->required();
    remove->add_option("INDEX", args->index, "The tile, as tiles numbers it")->required();
    remove->callback([&context, &out, args] {
        auto store = openStore(context);
        auto profile = resolveWorkspace(store.file().profiles, args->workspace);
        auto index = checkedIndex(profile, args->index, "INDEX");
        auto item = tileAt(profile, index);
        // The widget's own record says where it is shown; only hiding it keeps the two in step.
        if (isWidgetPlace(item))
            throw UsageError("tile " + std::to_string(index) +
                             " holds a widget's place; take the widget out with: "
                             "corvane widgets hide WIDGET --in " +
                             inQuotes(profile.name));
        auto apps = profile.items.size();
        if (index <= apps)
            profile.items.erase(profile.items.begin() + static_cast<std::ptrdiff_t>(index - 1));
        else
            profile.others.erase(profile.others.begin() + static_cast<std::ptrdiff_t>(index - 1 - apps));
        store.update(profile);
        out << "Removed " << inQuotes(item.displayName()) << " from " << inQuotes(profile.name) << ".\n";
    });

    auto* move = tiles->add_subcommand("move", "Move a tile to another place of its section");
    move->add_option("WORKSPACE", args->workspace, "Id or name")->required();
    move->add_option("FROM", args->from, "The tile, as tiles numbers it")->required();
    move->add_option("TO", args->to, "Its new place")->required();
    move->callback([&context, &out, args] {
        auto store = openStore(context);
        auto profile = resolveWorkspace(store.file().profiles, args->workspace);
        auto from = checkedIndex(profile, args->from, "FROM");
        auto sections = sectionsOf(profile);
        bool inApps = sections.inApps(from);
        auto [first, last] = sections.places(inApps, 0);
        if (args->to < static_cast<long long>(first) || args->to > static_cast<long long>(last))
            throw UsageError("tile " + std::to_string(from) + " stays in the " +
                             (inApps ? "apps" : "others") + " section: TO must be " + std::to_string(first) +
                             " to " + std::to_string(last) + ", not " + std::to_string(args->to));
        auto to = static_cast<std::size_t>(args->to);
        auto& list = inApps ? profile.items : profile.others;
        auto item = list[from - first];
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(from - first));
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(to - first), item);
        store.update(profile);
        out << "Moved " << inQuotes(item.displayName()) << " to tile " << to << " of "
            << inQuotes(profile.name) << ".\n";
    });
}

} // namespace corvane
