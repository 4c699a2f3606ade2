#include "CorvaneApp/cli/Tool.hpp"

#include "CorvaneApp/cli/AgentCommand.hpp"
#include "CorvaneApp/cli/AutomationCommands.hpp"
#include "CorvaneApp/cli/ClipboardCommands.hpp"
#include "CorvaneApp/cli/DockCommands.hpp"
#include "CorvaneApp/cli/GitHubCommands.hpp"
#include "CorvaneApp/cli/LooksCommands.hpp"
#include "CorvaneApp/cli/PreviewCommand.hpp"
#include "CorvaneApp/cli/SystemCommands.hpp"
#include "CorvaneApp/cli/TileCommands.hpp"
#include "CorvaneApp/cli/TransferCommands.hpp"
#include "CorvaneApp/cli/UsageCommands.hpp"
#include "CorvaneApp/cli/WeatherCommands.hpp"
#include "CorvaneApp/cli/WidgetCommands.hpp"
#include "CorvaneApp/cli/WorkspaceCommands.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <optional>
#include <ostream>
#include <string_view>

namespace corvane {

std::span<const CommandGroup> commandGroups() {
    // In the order `--help` lists them.
    static constexpr CommandGroup groups[] = {
        {"list show new rename delete edit activate move", addWorkspaceCommands},
        {"tiles", addTileCommands},
        {"dock diff switch apply capture undo backups", addDockCommands},
        {"export import", addTransferCommands},
        {"next previous hotkeys prefs focus desktop", addAutomationCommands},
        {"clipboard", addClipboardCommands},
        {"widgets water colour color colours colors", addWidgetCommands},
        {"weather", addWeatherCommands},
        {"github", addGitHubCommands},
        {"themes icons stack", addLooksCommands},
        {"preview icon", addPreviewCommand},
        {"usage", addUsageCommands},
        {"agent ui", addAgentCommand},
        {"apps desktops permissions version", addSystemCommands},
    };
    return groups;
}

// The build passes the project's version; a compile outside it (a lone syntax check) says so.
#ifndef CORVANE_VERSION
#define CORVANE_VERSION "unknown"
#endif

std::string_view toolVersion() { return CORVANE_VERSION; }

namespace {

/// The command word of a plain command line: the global options with their values, then a word.
std::optional<std::string_view> commandWord(int argc, const char* const* argv) {
    for (int i = 1; i < argc; ++i) {
        std::string_view word = argv[i];
        if (word == "--data-dir" || word == "--dock-plist") {
            if (++i == argc || std::string_view(argv[i]).starts_with("-")) return std::nullopt;
        } else if (!word.starts_with("--data-dir=") && !word.starts_with("--dock-plist=")) {
            if (word.starts_with("-")) return std::nullopt;
            return word;
        }
    }
    return std::nullopt;
}

bool names(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        auto end = words.find(' ');
        if (words.substr(0, end) == word) return true;
        words.remove_prefix(end == std::string_view::npos ? words.size() : end + 1);
    }
    return false;
}

/// The commands the parser needs for a command line. Building every command's options is a good
/// part of a short command's run, so a line that names its command gets only that command's group
/// (the others could not match it), and a line of options alone (`--version`) needs none unless it
/// asks for help. Anything else gets them all.
std::span<const CommandGroup> groupsFor(int argc, const char* const* argv) {
    const auto groups = commandGroups();
    if (auto word = commandWord(argc, argv)) {
        auto named = std::find_if(groups.begin(), groups.end(),
                                  [&](const CommandGroup& group) { return names(group.words, *word); });
        return named == groups.end() ? groups : groups.subspan(static_cast<std::size_t>(named - groups.begin()), 1);
    }
    for (int i = 1; i < argc; ++i) {
        std::string_view word = argv[i];
        // A word the scan could not place, or any spelling of help (also among combined flags).
        if (!word.starts_with("-") || word.find('h') != std::string_view::npos) return groups;
    }
    return {};
}

} // namespace

int runTool(int argc, const char* const* argv, ToolServices& services, std::ostream& out, std::ostream& err) {
    ToolStreams streams{out, err};
    return runTool(argc, argv, services, streams);
}

int runTool(int argc, const char* const* argv, ToolServices& services, ToolStreams& streams) {
    auto& out = streams.out;
    auto& err = streams.err;
    ToolContext context{services, out, std::nullopt, std::nullopt, streams.in, {}};
    struct KeepMade {
        ToolStreams& streams;
        ToolContext& context;
        ~KeepMade() { streams.made = std::move(context.made); }
    } keep{streams, context};
    CLI::App app{"Corvane keeps named Dock layouts (workspaces) and switches between them.", "corvane"};
    app.require_subcommand(1);
    app.fallthrough();
    app.add_option("--data-dir", context.dataDirOption, "Data folder (default: $CORVANE_APP_SUPPORT_DIR, else the user's)");
    app.add_option("--dock-plist", context.dockPlistOption,
                   "Work on this Dock preferences file instead of the live Dock, and restart nothing");
    app.set_version_flag("--version", std::string(toolVersion()), "Print the version and stop");
    for (const auto& group : groupsFor(argc, argv)) group.add(app, context);

    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return 0;
    } catch (const CLI::CallForAllHelp&) {
        out << app.help("", CLI::AppFormatMode::All);
        return 0;
    } catch (const CLI::CallForVersion& version) {
        out << version.what() << "\n";
        return 0;
    } catch (const CLI::ParseError& error) {
        err << "corvane: " << error.what() << "\n";
        return 2;
    } catch (const UsageError& error) {
        err << "corvane: " << error.what() << "\n";
        return 2;
    } catch (const std::exception& error) {
        err << "corvane: " << error.what() << "\n";
        return 1;
    }
}

} // namespace corvane
