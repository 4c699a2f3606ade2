#include "CorvaneApp/cli/LooksCommands.hpp"

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/looks/IconOverrides.hpp"
#include "CorvaneApp/preferences/AppPreferences.hpp"
#include "CorvaneCore/bar/FolderStack.hpp"
#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/looks/DockTheme.hpp"
#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"

#include <CLI/CLI.hpp>

#include <iomanip>
#include <memory>
#include <ostream>
#include <sstream>

namespace corvane {

namespace {

struct Arguments {
    bool json = false;
    std::string pack;
    bool original = false;
    std::optional<std::string> app;
    std::string folder;
    std::string sort = "name";
};

std::string_view backgroundName(DockTheme::Background::Kind kind) {
    using Kind = DockTheme::Background::Kind;
    switch (kind) {
    case Kind::liquid:
        return "liquid";
    case Kind::frosted:
        return "frosted";
    case Kind::gradient:
        return "gradient";
    case Kind::shelf:
        return "shelf";
    case Kind::glass:
        return "glass";
    case Kind::none:
        return "none";
    }
    return "none";
}

Json themeJson(const DockTheme& theme, bool seasonal) {
    Json background{{"kind", backgroundName(theme.background.kind())}};
    if (auto liquid = std::get_if<DockTheme::Background::Liquid>(&theme.background.value))
        background["opacity"] = liquid->opacity;
    if (auto colors = theme.background.colors()) {
        background["topHex"] = colors->topHex;
        if (colors->bottomHex) background["bottomHex"] = *colors->bottomHex;
        background["opacity"] = colors->opacity;
    }
    Json json{{"id", theme.id},
              {"name", theme.name},
              {"seasonal", seasonal},
              {"background", background},
              {"cornerRadiusScale", theme.cornerRadiusScale},
              {"borderWidth", theme.borderWidth},
              {"showsReflections", theme.showsReflections}};
    auto put = [&](const char* key, const std::optional<std::string>& hex) {
        if (hex) json[key] = *hex;
    };
    put("borderHex", theme.borderHex);
    put("glowHex", theme.glowHex);
    put("indicatorHex", theme.indicatorHex);
    put("separatorHex", theme.separatorHex);
    if (const auto& decoration = theme.decoration) {
        Json extras{{"lightHexes", decoration->lightHexes}, {"bulb", rawValue(decoration->bulb)}};
        if (decoration->particles) extras["particles"] = rawValue(*decoration->particles);
        if (decoration->edgeCover) extras["edgeCover"] = rawValue(*decoration->edgeCover);
        if (const auto& outline = decoration->outline) {
            if (outline->kind == DockTheme::Outline::Kind::stripes)
                extras["outline"] = {{"stripes", *outline->hex}};
            else
                extras["outline"] = "candies";
        }
        json["decoration"] = extras;
    }
    return json;
}

std::string themeSummary(const DockTheme& theme) {
    std::string summary(backgroundName(theme.background.kind()));
    if (auto colors = theme.background.colors())
        summary += " " + colors->topHex + (colors->bottomHex ? " → " + *colors->bottomHex : "");
    if (const auto& decoration = theme.decoration) {
        if (decoration->particles) summary += ", " + std::string(rawValue(*decoration->particles));
        if (decoration->edgeCover) summary += ", " + std::string(rawValue(*decoration->edgeCover)) + " edge";
        if (!decoration->lightHexes.empty())
            summary += ", " + std::to_string(decoration->lightHexes.size()) + " " +
                       std::string(rawValue(decoration->bulb)) + " lights";
    }
    return summary;
}

std::string padded(const std::string& text, std::size_t width) {
    auto length = text::utf8Characters(text).size();
    return text + std::string(length < width ? width - length : 0, ' ');
}

std::string percent(double share) {
    std::ostringstream text;
    text << share * 100 << "%";
    return text.str();
}

/// An application argument: a bundle path, or a "file://" URL of one. Choices are keyed by path
/// for bundles without an identifier, so the path is made absolute.
std::string appPath(const std::string& argument) {
    std::error_code error;
    auto path = std::filesystem::absolute(DockURLString::path(argument), error);
    return DockURLString::normalize(error ? argument : path.lexically_normal().string());
}

const IconPack& findPack(const IconOverrides& overrides, const std::string& name) {
    if (auto pack = overrides.pack(name)) return *pack;
    for (const auto& pack : overrides.packs())
        if (text::equalsIgnoringCase(pack.name, name) || text::equalsIgnoringCase(pack.id, name)) return pack;
    throw std::runtime_error("no icon pack is called \"" + name + "\" (corvane icons packs lists them)");
}

std::string_view rawValue(IconOverrides::Resolution::Source source) {
    using Source = IconOverrides::Resolution::Source;
    return source == Source::custom ? "custom" : source == Source::pack ? "pack" : "system";
}

std::string_view rawValue(IconOverrides::Resolution::Reason reason) {
    using Reason = IconOverrides::Resolution::Reason;
    switch (reason) {
    case Reason::customIcon:
        return "customIcon";
    case Reason::chosenForApp:
        return "chosenForApp";
    case Reason::defaultPack:
        return "defaultPack";
    case Reason::noPackChosen:
        return "noPackChosen";
    case Reason::originalChosen:
        return "originalChosen";
    case Reason::packNotInstalled:
        return "packNotInstalled";
    case Reason::noIconInPack:
        return "noIconInPack";
    }
    return "noPackChosen";
}

std::string because(const IconOverrides::Resolution& resolution) {
    using Reason = IconOverrides::Resolution::Reason;
    auto pack = "pack \"" + resolution.packID.value_or("") + "\"";
    switch (resolution.reason) {
    case Reason::customIcon:
        return "a custom icon is set for it";
    case Reason::chosenForApp:
    case Reason::defaultPack: {
        auto text = pack + (resolution.reason == Reason::chosenForApp ? " is chosen for it"
                                                                      : " is used for every app");
        if (resolution.match)
            text +=
                " and matches its " + std::string(describe(*resolution.match)) + " (\"" +
                IconPack::key(resolution.match == IconPack::Match::name ? resolution.app.name
                                                                        : *resolution.app.bundleIdentifier) +
                "\")";
        if (resolution.padding > 0) text += "; padded by " + percent(resolution.padding) + " on each side";
        return text;
    }
    case Reason::noPackChosen:
        return "no icon pack is chosen";
    case Reason::originalChosen:
        return "the original icon is chosen for it";
    case Reason::packNotInstalled:
        return pack + " is chosen but not installed";
    case Reason::noIconInPack:
        return pack + " has no icon for it";
    }
    return "";
}

void addThemes(CLI::App& app, ToolContext& context, const std::shared_ptr<Arguments>& args) {
    auto* themes = app.add_subcommand(
        "themes", "List the own Dock bar's themes, the seasonal ones last; * marks the chosen one");
    themes->add_flag("--json", args->json, "Print the themes as JSON");
    themes->callback([&context, args] {
        auto& out = context.out;
        auto defaults = context.openDefaults();
        const auto chosen = AppPreferences(*defaults).load().dockStyle.themeID;
        if (args->json) {
            auto list = Json::array();
            for (const auto& theme : DockTheme::all())
                list.push_back(themeJson(theme, false));
            for (const auto& theme : DockTheme::seasonal())
                list.push_back(themeJson(theme, true));
            for (auto& theme : list)
                theme["chosen"] = theme["id"] == chosen;
            out << prettyJson(list);
            return;
        }
        auto print = [&](const std::vector<DockTheme>& list) {
            for (const auto& theme : list)
                out << (theme.id == chosen ? "* " : "  ") << padded(theme.id, 15) << padded(theme.name, 15)
                    << themeSummary(theme) << "\n";
        };
        out << "Themes:\n";
        print(DockTheme::all());
        out << "Seasonal themes:\n";
        print(DockTheme::seasonal());
    });
}

void addIcons(CLI::App& app, ToolContext& context, const std::shared_ptr<Arguments>& args) {
    auto* icons = app.add_subcommand("icons", "Icon packs and the icons chosen for applications");
    icons->require_subcommand(1);

    auto* packs =
        icons->add_subcommand("packs", "List the installed icon packs; * marks the one used for every app");
    packs->add_flag("--json", args->json, "Print the packs as JSON");
    packs->callback([&context, args] {
        auto dataDirectory = context.dataDirectory();
        IconOverrides overrides(dataDirectory);
        const auto& defaultPack = overrides.choices().defaultPackID;
        auto& out = context.out;
        if (args->json) {
            auto list = Json::array();
            for (const auto& pack : overrides.packs()) {
                Json files = Json::object();
                for (const auto& [key, file] : pack.icons)
                    files[key] = file.string();
                Json json{{"id", pack.id},
                          {"name", pack.name},
                          {"padding", pack.padding},
                          {"icons", files},
                          {"hasWidgetStyle", pack.widgetStyle.has_value()},
                          {"isDefault", pack.id == defaultPack}};
                if (pack.author) json["author"] = *pack.author;
                if (pack.version) json["version"] = *pack.version;
                list.push_back(json);
            }
            out << prettyJson(list);
            return;
        }
        if (overrides.packs().empty()) {
            out << "No icon packs installed; add pack folders to "
                << StoragePath::iconPacksDirectory(dataDirectory).string() << ".\n";
            return;
        }
        for (const auto& pack : overrides.packs()) {
            out << (pack.id == defaultPack ? "* " : "  ") << pack.id;
            if (pack.name != pack.id) out << " \"" << pack.name << "\"";
            if (pack.author) out << " by " << *pack.author;
            if (pack.version) out << ", version " << *pack.version;
            out << ": " << pack.icons.size() << (pack.icons.size() == 1 ? " icon" : " icons");
            if (pack.padding > 0) out << ", padded by " << percent(pack.padding);
            if (pack.widgetStyle) out << ", widget style";
            out << "\n";
        }
    });

    auto* resolve =
        icons->add_subcommand("resolve", "Tell which image the bar draws for an application, and why");
    resolve->add_option("APP", args->folder, "The application bundle's path")->required();
    resolve->add_flag("--json", args->json, "Print the answer as JSON");
    resolve->callback([&context, args] {
        IconOverrides overrides(context.dataDirectory());
        auto path = appPath(args->folder);
        auto resolution = overrides.resolve(path);
        // Only decoding tells whether the chosen image can be drawn at all.
        bool drawable = resolution.file && overrides.image(path).has_value();
        auto& out = context.out;
        if (args->json) {
            Json json{{"app", path},
                      {"name", resolution.app.name},
                      {"key", resolution.key},
                      {"source", drawable ? rawValue(resolution.source) : "system"},
                      {"reason", rawValue(resolution.reason)},
                      {"padding", resolution.padding}};
            if (resolution.app.bundleIdentifier) json["bundleIdentifier"] = *resolution.app.bundleIdentifier;
            if (resolution.packID) json["packID"] = *resolution.packID;
            if (resolution.file) json["file"] = resolution.file->string();
            if (resolution.match) json["match"] = std::string(describe(*resolution.match));
            if (resolution.file && !drawable) json["undecodable"] = true;
            out << prettyJson(json);
            return;
        }
        out << resolution.app.name;
        if (resolution.app.bundleIdentifier) out << " (" << *resolution.app.bundleIdentifier << ")";
        out << "\n";
        if (!resolution.file)
            out << "  draws the system icon: " << because(resolution) << "\n";
        else if (!drawable)
            out << "  draws the system icon: " << resolution.file->string() << " cannot be decoded\n";
        else
            out << "  draws " << resolution.file->string() << "\n  because " << because(resolution) << "\n";
    });

    auto* use =
        icons->add_subcommand("use", "Use an icon pack (or the original icons) for every app or for one");
    use->add_option("PACK", args->pack, "The pack's id or name");
    use->add_flag("--original", args->original, "The applications' own icons");
    use->add_option("--for", args->app, "Only for the application bundle at this path");
    use->callback([&context, args] {
        if (args->original == !args->pack.empty())
            throw UsageError("icons use takes either PACK or --original");
        IconOverrides overrides(context.dataDirectory());
        std::optional<std::string> packID;
        std::string packName;
        if (!args->original) {
            const auto& pack = findPack(overrides, args->pack);
            packID = pack.id;
            packName = pack.name;
        }
        auto& out = context.out;
        if (!args->app) {
            overrides.useForAllApps(packID);
            if (packID)
                out << "Every app now uses icon pack \"" << packName << "\".\n";
            else
                out << "Every app now uses its original icon.\n";
            return;
        }
        auto path = appPath(*args->app);
        overrides.select(
            packID ? IconOverrides::Selection::pack(*packID) : IconOverrides::Selection::original(), path);
        auto name = AppBundle::read(path).name;
        if (packID)
            out << name << " now uses icon pack \"" << packName << "\".\n";
        else
            out << name << " now uses its original icon.\n";
        if (overrides.customIcons().contains(IconOverrides::key(AppBundle::read(path), path)))
            out << "Its custom icon still comes first.\n";
    });
}

void addStack(CLI::App& app, ToolContext& context, const std::shared_ptr<Arguments>& args) {
    auto* stack = app.add_subcommand("stack", "List a folder as the bar's stack shows it");
    stack->add_option("FOLDER", args->folder, "The folder")->required();
    stack->add_option("--sort", args->sort, "name, kind or dateAdded (newest first)")
        ->check(CLI::IsMember({"name", "kind", "dateAdded"}));
    stack->add_flag("--json", args->json, "Print the items as JSON");
    stack->callback([&context, args] {
        std::error_code error;
        if (!std::filesystem::is_directory(args->folder, error))
            throw std::runtime_error("no folder at " + args->folder);
        auto items = FolderStack::items(args->folder, *sortOrderFromRaw(args->sort));
        auto& out = context.out;
        if (args->json) {
            auto list = Json::array();
            for (const auto& item : items)
                list.push_back({{"path", item.path},
                                {"name", item.name},
                                {"kind", item.kind},
                                {"dateAdded", item.dateAdded.sinceReferenceDate},
                                {"isDirectory", item.isDirectory}});
            out << prettyJson(list);
            return;
        }
        // Off macOS a folder has no type description; say what it is.
        auto kind = [](const StackItem& item) {
            return item.kind.empty() && item.isDirectory ? std::string("folder") : item.kind;
        };
        auto name = [](const StackItem& item) { return item.name + (item.isDirectory ? "/" : ""); };
        std::size_t nameWidth = 0, kindWidth = 0;
        for (const auto& item : items) {
            nameWidth = std::max(nameWidth, text::utf8Characters(name(item)).size());
            kindWidth = std::max(kindWidth, text::utf8Characters(kind(item)).size());
        }
        for (const auto& item : items)
            out << padded(name(item), nameWidth + 2) << padded(kind(item), kindWidth + 2)
                << iso8601(item.dateAdded, false) << "\n";
    });
}

} // namespace

void addLooksCommands(CLI::App& app, ToolContext& context) {
    auto args = std::make_shared<Arguments>();
    addThemes(app, context, args);
    addIcons(app, context, args);
    addStack(app, context, args);
}

} // namespace corvane
