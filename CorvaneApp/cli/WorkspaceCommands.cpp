#include "CorvaneApp/cli/WorkspaceCommands.hpp"

#include "CorvaneApp/cli/HotkeyArgument.hpp"
#include "CorvaneApp/cli/TextColumns.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/cli/WorkspaceArgument.hpp"
#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <ostream>

namespace corvane {

namespace {

ProfileStore openStore(ToolContext& context) {
    return ProfileStore(StoragePath::profilesFileURL(context.dataDirectory()), &context.services.notifier);
}

ProfileColor parseColor(const std::string& text) {
    if (auto color = profileColorFromRaw(text::lowercased(text::trimmed(text)))) return *color;
    throw UsageError("unknown colour \"" + text + "\" (choose blue, pink, orange, green, purple or graphite)");
}

/// "#RRGGBB" in upper case, from the hex-colour rule's accepted forms.
std::string parseHex(const std::string& text) {
    auto digits = text::trimmed(text);
    if (digits.starts_with("#")) digits.remove_prefix(1);
    if (digits.size() != 6 || digits.find_first_not_of("0123456789abcdefABCDEF") != std::string_view::npos)
        throw UsageError("\"" + text + "\" is not a colour like #RRGGBB");
    return "#" + text::uppercased(digits);
}

std::string quoted(const std::string& name) { return "\"" + name + "\""; }

void printList(const ProfilesFile& file, std::ostream& out) {
    if (file.profiles.empty()) {
        out << "No workspaces yet. Make one with: corvane new NAME\n";
        return;
    }
    std::size_t nameWidth = 4;
    for (const auto& p : file.profiles) nameWidth = std::max(nameWidth, displayWidth(p.name));
    out << "  " << padded("NAME", nameWidth) << "  COLOUR    APPS  OTHERS  HOTKEY  ID\n";
    for (const auto& p : file.profiles) {
        bool active = file.activeProfileId == p.id;
        out << (active ? "* " : "  ") << padded(p.name, nameWidth) << "  " << padded(std::string(rawValue(p.color)), 8)
            << "  " << padded(std::to_string(p.items.size()), 4) << "  " << padded(std::to_string(p.others.size()), 6)
            << "  " << padded(p.hotkey ? p.hotkey->displayString() : "-", 6) << "  " << p.id.string() << "\n";
    }
}

void printItems(const char* title, const std::vector<DockItem>& items, std::ostream& out) {
    out << "  " << title << " (" << items.size() << ")" << (items.empty() ? "\n" : ":\n");
    std::size_t index = 0;
    for (const auto& item : items) {
        out << "    " << ++index << ". " << item.displayName();
        if (auto app = item.app()) {
            out << "  " << app->path;
            if (app->bundleIdentifier) out << "  [" << *app->bundleIdentifier << "]";
        } else if (item.spacer()) {
            out << "  (spacer)";
        } else if (auto file = item.file()) {
            out << "  " << file->path << (file->isDirectory ? "  (folder)" : "");
        } else if (auto url = item.url()) {
            out << "  " << url->url;
        }
        out << "\n";
    }
}

void printWorkspace(const ProfilesFile& file, const Profile& p, std::ostream& out) {
    out << p.name << (file.activeProfileId == p.id ? "  (active)" : "") << "\n";
    out << "  id:          " << p.id.string() << "\n";
    out << "  colour:      " << displayName(p.color) << " (" << hex(p.color) << ")\n";
    out << "  indicator:   " << p.indicatorHex() << (p.indicatorColorHex ? "" : " (the colour's)") << "\n";
    out << "  hotkey:      " << (p.hotkey ? p.hotkey->displayString() : "none") << "\n";
    out << "  other apps:  " << rawValue(p.otherWorkspaceApps) << "\n";
    out << "  focus:       " << (p.focusModeBinding ? *p.focusModeBinding : "none") << "\n";
    out << "  desktops:    " << (p.desktopUUIDs.empty() ? "none" : "") ;
    for (std::size_t i = 0; i < p.desktopUUIDs.size(); ++i) out << (i ? ", " : "") << p.desktopUUIDs[i];
    out << "\n";
    printItems("apps", p.items, out);
    printItems("others", p.others, out);
    if (!p.stacks.empty()) out << "  widget stacks: " << p.stacks.size() << "\n";
}

struct EditOptions {
    std::optional<std::string> color, otherApps, indicator, hotkey, focus;
    bool noIndicator = false, noHotkey = false, noFocus = false;

    bool empty() const {
        return !color && !otherApps && !indicator && !hotkey && !focus && !noIndicator && !noHotkey && !noFocus;
    }
};

Profile edited(Profile profile, const EditOptions& edit, const std::vector<Profile>& all) {
    if (edit.empty())
        throw UsageError("nothing to change: give --color, --other-apps, --indicator, --hotkey or --focus");
    if (edit.color) profile.color = parseColor(*edit.color);
    if (edit.otherApps) {
        auto rule = otherWorkspaceAppsFromRaw(text::lowercased(text::trimmed(*edit.otherApps)));
        if (!rule) throw UsageError("--other-apps takes keep, hide or quit, not \"" + *edit.otherApps + "\"");
        profile.otherWorkspaceApps = *rule;
    }
    if (edit.indicator) profile.indicatorColorHex = parseHex(*edit.indicator);
    if (edit.noIndicator) profile.indicatorColorHex.reset();
    if (edit.focus) {
        auto focus = std::string(text::trimmed(*edit.focus));
        if (focus.empty()) throw UsageError("--focus needs the name of a Focus; use --no-focus to clear it");
        profile.focusModeBinding = focus;
    }
    if (edit.noFocus) profile.focusModeBinding.reset();
    if (edit.noHotkey) profile.hotkey.reset();
    if (edit.hotkey) {
        auto hotkey = parseHotkeyArgument(*edit.hotkey);
        if (!hotkey.modifiers.isValidForGlobalHotkey())
            throw std::runtime_error("hotkey " + hotkey.displayString() +
                                     " cannot be a global hotkey: it needs command, option or control");
        if (auto other = hotkey.conflictingProfile(all, profile.id))
            throw std::runtime_error("hotkey " + hotkey.displayString() + " is already used by workspace " +
                                     quoted(other->name));
        profile.hotkey = hotkey;
    }
    return profile;
}

// Values the parser fills in; owned by the callbacks, so they live as long as the parser.
struct Arguments {
    bool json = false;
    std::string target, name;
    long long position = 0;
    std::optional<std::string> color;
    bool fromDock = false;
    EditOptions edit;
};

} // namespace

void addWorkspaceCommands(CLI::App& app, ToolContext& context) {
    auto& out = context.out;
    auto args = std::make_shared<Arguments>();

    auto* list = app.add_subcommand("list", "List the workspaces; * marks the active one");
    list->add_flag("--json", args->json, "Print the workspaces file as profiles.json holds it");
    list->callback([&context, &out, args] {
        auto store = openStore(context);
        if (args->json) out << profilesFileText(store.file());
        else printList(store.file(), out);
    });

    auto* show = app.add_subcommand("show", "Show one workspace");
    show->add_option("WORKSPACE", args->target, "Id or name")->required();
    show->add_flag("--json", args->json, "Print the workspace object as the workspaces file holds it");
    show->callback([&context, &out, args] {
        auto store = openStore(context);
        const auto& profile = resolveWorkspace(store.file().profiles, args->target);
        if (args->json) out << prettyJson(encodeProfile(profile));
        else printWorkspace(store.file(), profile, out);
    });

    auto* create = app.add_subcommand("new", "Make an empty workspace and print its id");
    create->add_option("NAME", args->name, "Its name")->required();
    create->add_option("--color,--colour", args->color, "blue, pink, orange, green, purple or graphite");
    create->add_flag("--from-dock", args->fromDock, "Start with the Dock's current tiles");
    create->callback([&context, &out, args] {
        auto store = openStore(context);
        Profile profile;
        profile.id = Uuid::generate();
        profile.name = args->name;
        if (args->fromDock) {
            auto dock = context.openDock();
            auto snapshot = DockPlistReader(*dock.backend, context.services.clock).read();
            profile.items = snapshot.apps;
            profile.others = snapshot.others;
        }
        // Without a colour, each new workspace takes the next one of the palette.
        profile.color = args->color ? parseColor(*args->color)
                                 : kAllProfileColors[store.file().profiles.size() % kAllProfileColors.size()];
        auto id = store.create(profile).id.string();
        context.made["id"] = id;
        out << id << "\n";
    });

    auto* rename = app.add_subcommand("rename", "Give a workspace another name");
    rename->add_option("WORKSPACE", args->target, "Id or name")->required();
    rename->add_option("NAME", args->name, "The new name")->required();
    rename->callback([&context, &out, args] {
        if (text::trimmed(args->name).empty()) throw UsageError("a workspace needs a name that is not blank");
        auto store = openStore(context);
        auto profile = resolveWorkspace(store.file().profiles, args->target);
        auto old = profile.name;
        profile.name = args->name;
        store.update(profile);
        out << "Renamed " << quoted(old) << " to " << quoted(args->name) << ".\n";
    });

    auto* remove = app.add_subcommand("delete", "Delete a workspace");
    remove->add_option("WORKSPACE", args->target, "Id or name")->required();
    remove->callback([&context, &out, args] {
        auto store = openStore(context);
        auto profile = resolveWorkspace(store.file().profiles, args->target);
        store.remove(profile.id);
        out << "Deleted " << quoted(profile.name) << ".\n";
    });

    auto* edit = app.add_subcommand("edit", "Change a workspace's colour, rules and bindings");
    edit->add_option("WORKSPACE", args->target, "Id or name")->required();
    edit->add_option("--color,--colour", args->edit.color, "blue, pink, orange, green, purple or graphite");
    edit->add_option("--other-apps", args->edit.otherApps, "What switching here does to other workspaces' apps: keep, hide or quit");
    auto* indicator = edit->add_option("--indicator", args->edit.indicator, "Indicator colour as #RRGGBB");
    edit->add_flag("--no-indicator", args->edit.noIndicator, "Use the workspace colour as indicator")->excludes(indicator);
    auto* hotkey = edit->add_option("--hotkey", args->edit.hotkey, "Global hotkey, like ctrl+opt+1 or cmd+shift+k");
    edit->add_flag("--no-hotkey", args->edit.noHotkey, "Remove the hotkey")->excludes(hotkey);
    auto* focus = edit->add_option("--focus", args->edit.focus, "The Focus that selects this workspace");
    edit->add_flag("--no-focus", args->edit.noFocus, "Remove the Focus binding")->excludes(focus);
    edit->callback([&context, &out, args] {
        auto store = openStore(context);
        const auto& all = store.file().profiles;
        auto profile = edited(resolveWorkspace(all, args->target), args->edit, all);
        store.update(profile);
        out << "Updated " << quoted(profile.name) << ".\n";
    });

    auto* move = app.add_subcommand("move", "Put a workspace at another place of the list");
    move->add_option("WORKSPACE", args->target, "Id or name")->required();
    move->add_option("POSITION", args->position, "Its new place, from 1")->required();
    move->callback([&context, &out, args] {
        auto store = openStore(context);
        auto& profiles = store.file().profiles;
        auto profile = resolveWorkspace(profiles, args->target);
        if (args->position < 1 || static_cast<std::size_t>(args->position) > profiles.size())
            throw UsageError("POSITION must be 1 to " + std::to_string(profiles.size()) + ", not " +
                             std::to_string(args->position));
        profiles.erase(std::find(profiles.begin(), profiles.end(), profile));
        profiles.insert(profiles.begin() + (args->position - 1), profile);
        store.save();
        out << "Moved " << quoted(profile.name) << " to place " << args->position << " of " << profiles.size()
            << ".\n";
    });

    auto* activate = app.add_subcommand("activate", "Make a workspace the active one without touching the Dock");
    activate->add_option("WORKSPACE", args->target, "Id or name")->required();
    activate->callback([&context, &out, args] {
        auto store = openStore(context);
        auto profile = resolveWorkspace(store.file().profiles, args->target);
        store.setActive(profile.id);
        out << quoted(profile.name) << " is now the active workspace.\n";
    });
}

} // namespace corvane
