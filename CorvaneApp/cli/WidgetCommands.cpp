#include "CorvaneApp/cli/WidgetCommands.hpp"

#include "CorvaneApp/cli/LiveReaders.hpp"
#include "CorvaneApp/cli/PreviewCommand.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/cli/WorkspaceArgument.hpp"
#include "CorvaneApp/widgets/PlaceholderHelpers.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneStorage/storage/AtomicFile.hpp"
#include "CorvaneCore/widgets/WidgetCoding.hpp"
#include "CorvaneCore/widgets/WidgetPlacement.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"
#include "CorvaneWidgetsUI/timer/TimeKeepingServices.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <ostream>
#include <set>

namespace corvane {

namespace {

// What a new widget is called when the user gives no name, in `WidgetKind` order.
constexpr std::string_view kKindTitles[] = {
    "Apps",      "Timer",     "Pomodoro",     "Music",       "Calendar", "Battery", "Clock",
    "Stopwatch", "Countdown", "Progress",     "Activity",    "Network",  "Note",    "Reminders",
    "Shortcut",  "AirDrop",   "Weather",      "Claude",      "GitHub",   "Pet",     "Colour Picker",
    "Clipboard", "Bookmarks", "Emoji",        "Screenshots", "Files",    "Shelf",   "Water",
    "Converter", "Fans",      "Keyboard Lock"};
static_assert(std::size(kKindTitles) == EnumCases<WidgetKind>::names.size());

std::string inQuotes(const std::string& text) {
    return "\"" + text + "\"";
}

/// Every kind with the spans it allows, for usage errors.
std::string kindList() {
    std::string list;
    for (std::size_t i = 0; i < EnumCases<WidgetKind>::names.size(); ++i) {
        auto kind = DockWidget::Kind::defaults(static_cast<WidgetKind>(i));
        list += (list.empty() ? "" : ", ") + std::string(kind.name()) +
                (kind.maxSpan() > 1 ? " (1-" + std::to_string(kind.maxSpan()) + ")" : " (1)");
    }
    return list;
}

WidgetKind parseKind(const std::string& text) {
    auto name = text::trimmed(text);
    for (std::size_t i = 0; i < EnumCases<WidgetKind>::names.size(); ++i)
        if (text::equalsIgnoringCase(EnumCases<WidgetKind>::names[i], name))
            return static_cast<WidgetKind>(i);
    throw UsageError("unknown widget kind " + inQuotes(text) +
                     "; the kinds, with their spans: " + kindList());
}

struct Stores {
    explicit Stores(ToolContext& context)
        : dataDirectory(context.dataDirectory()),
          widgets(StoragePath::widgetsFileURL(dataDirectory),
                  StoragePath::legacyCollectionsFileURL(dataDirectory), &context.services.notifier),
          profiles(StoragePath::profilesFileURL(dataDirectory), &context.services.notifier) {}

    std::string helperPath(std::optional<int> slot) const {
        return PlaceholderHelpers::path(dataDirectory, slot);
    }

    std::filesystem::path dataDirectory;
    WidgetStore widgets;
    ProfileStore profiles;
};

const DockWidget& resolveWidget(const std::vector<DockWidget>& widgets, const std::string& argument) {
    std::vector<NamedRecord> records;
    records.reserve(widgets.size());
    for (const auto& widget : widgets)
        records.push_back({widget.id, widget.name});
    return widgets[resolveNamedRecord(records, argument, "widget", true)];
}

/// Re-reads the workspaces file, applies `change` to every workspace and writes it once.
template <typename Change> void changeWorkspaces(ProfileStore& store, Change&& change) {
    store.reload();
    for (auto& profile : store.file().profiles)
        profile = change(profile);
    store.save();
}

std::vector<const Profile*> workspacesShowing(const DockWidget& widget, const ProfilesFile& file) {
    std::vector<const Profile*> showing;
    for (const auto& profile : file.profiles)
        if (WidgetPlacement::contains(widget, profile)) showing.push_back(&profile);
    return showing;
}

std::size_t displayWidth(const std::string& text) {
    return text::utf8Characters(text).size();
}

/// Rows of cells in aligned columns; the last column is not padded.
void printTable(const std::vector<std::vector<std::string>>& rows, std::ostream& out) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (widths.size() <= i) widths.push_back(0);
            widths[i] = std::max(widths[i], displayWidth(row[i]));
        }
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i];
            if (i + 1 < row.size()) line += std::string(widths[i] - displayWidth(row[i]) + 2, ' ');
        }
        out << line << "\n";
    }
}

void printWidgets(const WidgetsFile& file, const ProfilesFile& profiles, std::ostream& out) {
    if (file.widgets.empty() && file.unrecognized.empty()) {
        out << "No widgets yet. Add one with: corvane widgets add KIND\n";
        return;
    }
    std::vector<std::vector<std::string>> rows{{"NAME", "KIND", "SPAN", "SLOT", "SHOWN IN", "ID"}};
    for (const auto& widget : file.widgets) {
        std::string shown;
        for (const auto* profile : workspacesShowing(widget, profiles))
            shown += (shown.empty() ? "" : ", ") + profile->name;
        rows.push_back({widget.name, std::string(widget.kind.name()), std::to_string(widget.span),
                        widget.slot ? std::to_string(*widget.slot) : "-", shown.empty() ? "-" : shown,
                        widget.id.string()});
    }
    printTable(rows, out);
    if (!file.unrecognized.empty())
        out << file.unrecognized.size() << (file.unrecognized.size() == 1 ? " widget" : " widgets")
            << " of a newer version of Corvane kept as is.\n";
}

/// The widgets file as it is, each widget with the ids of the workspaces that show it.
Json widgetsJson(const WidgetsFile& file, const ProfilesFile& profiles) {
    auto json = encodeWidgetsFile(file);
    for (std::size_t i = 0; i < file.widgets.size(); ++i) {
        auto shownIn = Json::array();
        for (const auto* profile : workspacesShowing(file.widgets[i], profiles))
            shownIn.push_back(profile->id.string());
        json["widgets"][i]["shownIn"] = std::move(shownIn);
    }
    return json;
}

void printReadings(const std::vector<LiveWidgetRow>& live, std::ostream& out) {
    if (live.empty()) {
        out << "No widget is shown in any workspace. Show one with: corvane widgets show WIDGET --in WORKSPACE\n";
        return;
    }
    std::vector<std::vector<std::string>> rows{{"NAME", "KIND", "SHOWS", "DETAIL", "TROUBLE"}};
    for (const auto& [widget, reading] : live)
        rows.push_back({widget.name, std::string(widget.kind.name()), reading.caption.empty() ? "-" : reading.caption,
                        reading.detail.value_or("-"), reading.trouble.value_or("-")});
    printTable(rows, out);
}

Json readingsJson(const std::vector<LiveWidgetRow>& live) {
    auto json = Json::array();
    for (const auto& [widget, reading] : live) {
        Json row = {{"id", widget.id.string()},
                    {"name", widget.name},
                    {"kind", std::string(widget.kind.name())},
                    {"caption", reading.caption}};
        if (reading.detail) row["detail"] = *reading.detail;
        if (reading.progress) row["progress"] = *reading.progress;
        if (reading.trouble) row["trouble"] = *reading.trouble;
        json.push_back(std::move(row));
    }
    return json;
}

// Values the parser fills in; owned by the callbacks, so they live as long as the parser.
struct Arguments {
    bool json = false;
    std::string kind, widget, workspace, field, value;
    std::optional<std::string> name;
    std::optional<int> span;
    std::vector<std::string> members;
};

void show(Stores& stores, const std::string& widgetArgument, const std::string& workspaceArgument,
          std::ostream& out) {
    auto widget = resolveWidget(stores.widgets.file().widgets, widgetArgument);
    auto profile = resolveWorkspace(stores.profiles.file().profiles, workspaceArgument);
    if (WidgetPlacement::contains(widget, profile)) {
        out << inQuotes(widget.name) << " is already shown in " << inQuotes(profile.name) << ".\n";
        return;
    }
    // The macOS Dock can only tell widgets apart by their slot's placeholder application; the
    // own bar can show a widget without one.
    bool hadSlot = widget.slot.has_value();
    widget.slot = stores.widgets.claimSlot(widget.id);
    bool claimed = !hadSlot && widget.slot;
    if (auto* stored = stores.widgets.widget(WidgetAddress::id(widget.id))) widget = *stored;
    const auto& file = stores.widgets.file();
    changeWorkspaces(stores.profiles, [&](const Profile& each) {
        // A newly claimed slot changes the placeholder of every workspace that shows the widget.
        auto synced =
            !claimed
                ? each
                : WidgetPlacement::syncing(each, file.widgets, file.unrecognized,
                                           [&](std::optional<int> slot) { return stores.helperPath(slot); });
        if (each.id != profile.id) return synced;
        return WidgetPlacement::setting(widget, true, synced, stores.helperPath(widget.slot));
    });
    out << "Showing " << inQuotes(widget.name) << " in " << inQuotes(profile.name);
    if (widget.slot)
        out << " (Dock slot " << *widget.slot << ").\n";
    else
        out << ".\nAll " << DockSlot::count
            << " Dock slots are taken: only Corvane's own Dock bar can show it.\n";
}

void hide(Stores& stores, const std::string& widgetArgument, const std::string& workspaceArgument,
          std::ostream& out) {
    auto widget = resolveWidget(stores.widgets.file().widgets, widgetArgument);
    auto profile = resolveWorkspace(stores.profiles.file().profiles, workspaceArgument);
    if (!WidgetPlacement::contains(widget, profile)) {
        out << inQuotes(widget.name) << " is not shown in " << inQuotes(profile.name) << ".\n";
        return;
    }
    auto helper = stores.helperPath(widget.slot);
    changeWorkspaces(stores.profiles, [&](const Profile& each) {
        return each.id == profile.id ? WidgetPlacement::setting(widget, false, each, helper) : each;
    });
    // A widget shown nowhere gives its slot back for others.
    if (widget.slot && workspacesShowing(widget, stores.profiles.file()).empty())
        stores.widgets.releaseSlot(widget.id);
    out << "Hid " << inQuotes(widget.name) << " in " << inQuotes(profile.name) << ".\n";
}

void stack(Stores& stores, const Arguments& args, std::ostream& out) {
    if (args.members.size() < 2) throw UsageError("a stack needs at least two widgets");
    auto profile = resolveWorkspace(stores.profiles.file().profiles, args.workspace);
    std::vector<DockWidget> members;
    for (const auto& argument : args.members) {
        const auto& widget = resolveWidget(stores.widgets.file().widgets, argument);
        if (std::any_of(members.begin(), members.end(),
                        [&](const DockWidget& m) { return m.id == widget.id; }))
            throw UsageError(inQuotes(widget.name) + " is named twice; a stack holds each widget once");
        if (!WidgetPlacement::contains(widget, profile))
            throw std::runtime_error(inQuotes(widget.name) + " is not shown in " + inQuotes(profile.name) +
                                     "; show it first with: corvane widgets show " + inQuotes(widget.name) +
                                     " --in " + inQuotes(profile.name));
        if (!members.empty() && widget.span != members.front().span)
            throw std::runtime_error(
                "the widgets of a stack are all as wide: " + inQuotes(members.front().name) + " is " +
                std::to_string(members.front().span) + " tiles wide, " + inQuotes(widget.name) + " " +
                std::to_string(widget.span));
        members.push_back(widget);
    }
    WidgetStack created{Uuid::generate(), {}};
    for (const auto& member : members)
        created.members.push_back(member.id);
    changeWorkspaces(stores.profiles, [&](const Profile& each) {
        if (each.id != profile.id) return each;
        // A widget stands in one stack at a time: the new one takes it from any other.
        auto result = WidgetPlacement::pruningStacks(each, [&](const Uuid& id) {
            return std::find(created.members.begin(), created.members.end(), id) == created.members.end();
        });
        result.stacks.push_back(created);
        return result;
    });
    out << created.id.string() << "\n";
}

void unstack(Stores& stores, const std::string& workspace, const std::string& widgetArgument, std::ostream& out) {
    auto profile = resolveWorkspace(stores.profiles.file().profiles, workspace);
    const auto& widget = resolveWidget(stores.widgets.file().widgets, widgetArgument);
    auto holds = [&](const WidgetStack& stack) {
        return std::find(stack.members.begin(), stack.members.end(), widget.id) != stack.members.end();
    };
    if (std::none_of(profile.stacks.begin(), profile.stacks.end(), holds))
        throw std::runtime_error(inQuotes(widget.name) + " is in no stack in " + inQuotes(profile.name));
    changeWorkspaces(stores.profiles, [&](const Profile& each) {
        if (each.id != profile.id) return each;
        auto result = each;
        std::erase_if(result.stacks, holds);
        return result;
    });
    out << "Took the stack of " << inQuotes(widget.name) << " in " << inQuotes(profile.name)
        << " apart; its widgets stay, each in its own place.\n";
}


std::string fieldList(const Json& fields) {
    std::string list;
    for (const auto& [key, value] : fields.items()) list += (list.empty() ? "" : ", ") + key;
    return list;
}

/// The widget with one settings field changed, decoded as the widgets file would decode it.
DockWidget withField(const DockWidget& widget, const std::string& field, const Json& value);

/// VALUE is read as JSON, and where that gives no value for the field, as the text it is: a
/// name or a text field needs no quotes, even when it looks like a number.
DockWidget withField(const DockWidget& widget, const std::string& field, const std::string& text) {
    auto parsed = Json::parse(text, nullptr, false);
    if (parsed.is_discarded()) return withField(widget, field, Json(text));
    if (parsed.is_string()) return withField(widget, field, parsed);
    try {
        return withField(widget, field, parsed);
    } catch (const UsageError&) {
        if (parsed.is_null()) throw;
        try {
            return withField(widget, field, Json(text));
        } catch (const UsageError&) {
        }
        throw;
    }
}

DockWidget withField(const DockWidget& widget, const std::string& field, const Json& value) {
    auto fields = encodeSettingsFields(widget.kind);
    auto kindName = std::string(widget.kind.name());
    if (!fields.contains(field))
        throw UsageError("a " + kindName + " widget has " +
                         (fields.empty() ? std::string("no settings")
                                         : "no field " + inQuotes(field) + "; its fields: " + fieldList(fields)));
    auto kind = encodeKind(widget.kind);
    auto& settings = kind[kindName].contains("_0") ? kind[kindName]["_0"] : kind[kindName];
    if (value.is_null())
        settings.erase(field);
    else
        settings[field] = value;
    auto changed = widget;
    try {
        changed.kind = decodeKind(JsonReader(kind));
    } catch (const DecodingError& error) {
        throw UsageError(value.dump() + " is no value for " + field + " of a " + kindName + " widget: " + error.what());
    }
    return changed;
}

void printSettings(const DockWidget& widget, std::ostream& out) {
    auto fields = encodeSettingsFields(widget.kind);
    out << widget.name << " (" << widget.kind.name() << ", " << widget.span << (widget.span == 1 ? " tile" : " tiles")
        << " wide)\n";
    if (fields.empty()) out << "  no settings\n";
    for (const auto& [key, value] : fields.items())
        out << "  " << key << " = " << (value.is_null() ? std::string("unset") : value.dump()) << "\n";
}

} // namespace

void addWidgetCommands(CLI::App& app, ToolContext& context) {
    auto& out = context.out;
    auto args = std::make_shared<Arguments>();

    auto* widgets =
        app.add_subcommand("widgets", "List the widgets, and add, remove, show, hide, stack or unstack them");
    widgets->add_flag("--json", args->json,
                      "Print the widgets file, each widget with the workspaces showing it");
    widgets->callback([&context, &out, args, widgets] {
        if (!widgets->get_subcommands().empty()) return;
        Stores stores(context);
        if (args->json)
            out << prettyJson(widgetsJson(stores.widgets.file(), stores.profiles.file()));
        else
            printWidgets(stores.widgets.file(), stores.profiles.file(), out);
    });

    auto* add = widgets->add_subcommand("add", "Add a widget and print its id");
    add->add_option("KIND", args->kind, "pet, water, timer, … (an unknown kind lists them)")->required();
    add->add_option("--name", args->name, "Its name (default: after its kind)");
    add->add_option("--span", args->span, "Its width in tiles (default: the kind's)");
    add->callback([&context, &out, args] {
        auto kind = DockWidget::Kind::defaults(parseKind(args->kind));
        if (args->span && (*args->span < DockWidget::minSpan || *args->span > kind.maxSpan()))
            throw UsageError("a " + std::string(kind.name()) + " widget is 1 to " +
                             std::to_string(kind.maxSpan()) + " tiles wide, not " +
                             std::to_string(*args->span) + "; the kinds, with their spans: " + kindList());
        if (args->name && text::trimmed(*args->name).empty())
            throw UsageError("a widget needs a name that is not blank");
        auto name =
            args->name ? *args->name : std::string(kKindTitles[static_cast<std::size_t>(kind.which())]);
        Stores stores(context);
        auto widget =
            stores.widgets.create(DockWidget(Uuid::generate(), name, std::nullopt, kind, args->span));
        context.made["id"] = widget.id.string();
        out << widget.id.string() << "\n";
    });

    auto* remove = widgets->add_subcommand("remove", "Remove a widget, from every workspace too");
    remove->add_option("WIDGET", args->widget, "Id, unique id prefix or name")->required();
    remove->callback([&context, &out, args] {
        Stores stores(context);
        auto widget = resolveWidget(stores.widgets.file().widgets, args->widget);
        auto helper = stores.helperPath(widget.slot);
        // Workspaces first: should the second write fail, the widget is merely shown nowhere.
        changeWorkspaces(stores.profiles, [&](const Profile& each) {
            return WidgetPlacement::setting(widget, false, each, helper);
        });
        stores.widgets.remove(widget.id);
        forgetRuns(*context.openDefaults(), widget.id);
        out << "Removed " << inQuotes(widget.name) << ".\n";
    });

    auto* showCommand = widgets->add_subcommand("show", "Show a widget in a workspace");
    showCommand->add_option("WIDGET", args->widget, "Id, unique id prefix or name")->required();
    showCommand->add_option("--in", args->workspace, "The workspace")->required();
    showCommand->callback([&context, &out, args] {
        Stores stores(context);
        show(stores, args->widget, args->workspace, out);
    });

    auto* hideCommand = widgets->add_subcommand("hide", "Take a widget out of a workspace");
    hideCommand->add_option("WIDGET", args->widget, "Id, unique id prefix or name")->required();
    hideCommand->add_option("--in", args->workspace, "The workspace")->required();
    hideCommand->callback([&context, &out, args] {
        Stores stores(context);
        hide(stores, args->widget, args->workspace, out);
    });

    auto* stackCommand = widgets->add_subcommand(
        "stack", "Stack widgets shown in a workspace in one place; prints the stack's id");
    stackCommand->add_option("WORKSPACE", args->workspace, "Id or name")->required();
    stackCommand->add_option("WIDGET", args->members, "Two or more widgets of one width, in display order")
        ->required();
    stackCommand->callback([&context, &out, args] {
        Stores stores(context);
        stack(stores, *args, out);
    });

    auto* unstackCommand = widgets->add_subcommand(
        "unstack", "Take the stack holding a widget apart; its widgets stay in the workspace, each in its own place");
    unstackCommand->add_option("WORKSPACE", args->workspace, "Id or name")->required();
    unstackCommand->add_option("WIDGET", args->widget, "Any widget of the stack: id, unique id prefix or name")
        ->required();
    unstackCommand->callback([&context, &out, args] {
        Stores stores(context);
        unstack(stores, args->workspace, args->widget, out);
    });

    struct TileArguments {
        std::string widget;
        std::string kind;
        int size = 128;
        std::string output;
    };
    auto tileArgs = std::make_shared<TileArguments>();
    auto* tile = widgets->add_subcommand(
        "tile", "A widget's tile as the own Dock bar draws it now, as a PNG; a kind's, with its first settings");
    auto* tileWidget = tile->add_option("WIDGET", tileArgs->widget, "Id, unique id prefix or name");
    tile->add_option("--kind", tileArgs->kind, "A kind instead of a widget: timer, weather, …")->excludes(tileWidget);
    tile->add_option("--size", tileArgs->size, "Its width and height in pixels, 16 to 512 (default 128)");
    tile->add_option("-o,--output", tileArgs->output, "The PNG file to write, - for standard output")->required();
    tile->callback([&context, &out, tileArgs] {
        if (tileArgs->widget.empty() == tileArgs->kind.empty()) throw UsageError("give a widget, or --kind");
        if (tileArgs->size < 16 || tileArgs->size > 512)
            throw UsageError("--size must be 16 to 512 pixels, not " + std::to_string(tileArgs->size));
        if (text::trimmed(tileArgs->output).empty()) throw UsageError("-o needs a file name, or - for standard output");
        std::optional<DockWidget> widget;
        if (!tileArgs->kind.empty()) {
            auto kind = parseKind(tileArgs->kind);
            widget.emplace(Uuid::generate(), std::string(kKindTitles[static_cast<std::size_t>(kind)]), std::nullopt,
                           DockWidget::Kind::defaults(kind));
        } else {
            Stores stores(context);
            widget = resolveWidget(stores.widgets.file().widgets, tileArgs->widget);
        }
        auto png = widgetTilePNG(context, *widget, tileArgs->size);
        if (tileArgs->output == "-") {
            out << png;
            return;
        }
        writeFileAtomically(tileArgs->output, png);
        out << "Wrote " << tileArgs->output << " (the tile of " << inQuotes(widget->name) << ").\n";
    });

    auto* settings = widgets->add_subcommand("settings", "A widget's settings, every field with its value");
    settings->add_option("WIDGET", args->widget, "Id, unique id prefix or name")->required();
    settings->add_flag("--json", args->json, "Print the widget with its fields; unset ones are null");
    settings->callback([&context, &out, args] {
        Stores stores(context);
        const auto& widget = resolveWidget(stores.widgets.file().widgets, args->widget);
        if (!args->json) return printSettings(widget, out);
        out << prettyJson(Json{{"id", widget.id.string()},
                               {"name", widget.name},
                               {"kind", std::string(widget.kind.name())},
                               {"span", widget.span},
                               {"maxSpan", widget.kind.maxSpan()},
                               {"fields", encodeSettingsFields(widget.kind)}});
    });

    auto* set = widgets->add_subcommand("set", "Change a widget's name, width or one field of its settings");
    set->add_option("WIDGET", args->widget, "Id, unique id prefix or name")->required();
    set->add_option("FIELD", args->field, "A field as widgets settings lists it");
    set->add_option("VALUE", args->value,
                    "Its value as JSON (a number, true, \"text\", [...]), else as text; null unsets it");
    set->add_option("--name", args->name, "A new name");
    set->add_option("--span", args->span, "A new width in tiles");
    set->callback([&context, &out, args] {
        bool fieldGiven = !args->field.empty();
        if (!fieldGiven && !args->name && !args->span)
            throw UsageError("nothing to change: give FIELD VALUE, --name or --span");
        if (fieldGiven && (args->name || args->span))
            throw UsageError("change a settings field, or the name and width, not both at once");
        if (args->name && text::trimmed(*args->name).empty())
            throw UsageError("a widget needs a name that is not blank");
        Stores stores(context);
        auto widget = resolveWidget(stores.widgets.file().widgets, args->widget);
        auto before = widget;
        if (fieldGiven) widget = withField(widget, args->field, args->value);
        if (args->name) widget.name = *args->name;
        if (args->span) {
            if (*args->span < DockWidget::minSpan || *args->span > widget.kind.maxSpan())
                throw UsageError("a " + std::string(widget.kind.name()) + " widget is 1 to " +
                                 std::to_string(widget.kind.maxSpan()) + " tiles wide, not " +
                                 std::to_string(*args->span));
            widget.span = *args->span;
        }
        stores.widgets.update(widget);
        // A stack holds widgets of one width only.
        if (widget.span != before.span) {
            const auto& all = stores.widgets.file().widgets;
            changeWorkspaces(stores.profiles, [&](const Profile& each) {
                return WidgetPlacement::pruningMismatchedWidths(each, all);
            });
        }
        if (fieldGiven) {
            auto stored = encodeSettingsFields(widget.kind)[args->field];
            out << widget.name << ": " << args->field << " = "
                << (stored.is_null() ? std::string("unset") : stored.dump()) << "\n";
        } else {
            out << "Updated " << inQuotes(widget.name) << ".\n";
        }
    });

    auto* now = widgets->add_subcommand("now", "What each widget shown in a workspace shows at this moment");
    now->add_flag("--json", args->json, "Print them as a JSON array");
    now->callback([&context, &out, args] {
        Stores stores(context);
        auto live = readWidgetsNow(context, placedWidgets(stores.widgets.file(), stores.profiles.file()));
        if (args->json)
            out << prettyJson(readingsJson(live));
        else
            printReadings(live, out);
    });

    addWaterCommands(app, context);
    addColourCommands(app, context);
}

} // namespace corvane
