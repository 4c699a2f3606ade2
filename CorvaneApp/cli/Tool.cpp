#include "CorvaneApp/cli/Tool.hpp"

#include "CorvaneApp/cli/AgentCommand.hpp"
#include "CorvaneApp/cli/AutomationCommands.hpp"
#include "CorvaneApp/cli/ClipboardCommands.hpp"
#include "CorvaneApp/cli/DockCommands.hpp"
#include "CorvaneApp/cli/GitHubCommands.hpp"
#include "CorvaneApp/cli/LooksCommands.hpp"
#include "CorvaneApp/cli/PreviewCommand.hpp"
#include "CorvaneApp/cli/TransferCommands.hpp"
#include "CorvaneApp/cli/UsageCommands.hpp"
#include "CorvaneApp/cli/WeatherCommands.hpp"
#include "CorvaneApp/cli/WidgetCommands.hpp"
#include "CorvaneApp/cli/WorkspaceCommands.hpp"

#include <CLI/CLI.hpp>

#include <ostream>

namespace corvane {

int runTool(int argc, const char* const* argv, ToolServices& services, std::ostream& out, std::ostream& err) {
    ToolContext context{services, out, std::nullopt};
    CLI::App app{"Corvane keeps named Dock layouts (workspaces) and switches between them.", "corvane"};
    app.require_subcommand(1);
    app.fallthrough();
    app.add_option("--data-dir", context.dataDirOption, "Data folder (default: $CORVANE_APP_SUPPORT_DIR, else the user's)");
    app.add_option("--dock-plist", context.dockPlistOption,
                   "Work on this Dock preferences file instead of the live Dock, and restart nothing");
    addWorkspaceCommands(app, context);
    addDockCommands(app, context);
    addTransferCommands(app, context);
    addAutomationCommands(app, context);
    addClipboardCommands(app, context);
    addWidgetCommands(app, context);
    addWeatherCommands(app, context);
    addGitHubCommands(app, context);
    addLooksCommands(app, context);
    addPreviewCommand(app, context);
    addUsageCommands(app, context);
    addAgentCommand(app, context);

    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return 0;
    } catch (const CLI::CallForAllHelp&) {
        out << app.help("", CLI::AppFormatMode::All);
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
