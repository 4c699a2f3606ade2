#include "CorvaneApp/cli/AgentCommand.hpp"

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/shell/AppHost.hpp"
#include "CorvaneApp/shell/LivePlatform.hpp"
#include "platform/posix/TerminationSignals.hpp"

#include <CLI/CLI.hpp>

#include <atomic>
#include <ostream>
#include <stdexcept>
#include <string>

#ifdef __linux__
#include <filesystem>
#endif

namespace corvane {

namespace {

/// The threads of this process, where the system lists them; none elsewhere.
std::optional<long> threadCount() {
#ifdef __linux__
    std::error_code error;
    long count = 0;
    for (std::filesystem::directory_iterator it("/proc/self/task", error), end; !error && it != end; it.increment(error))
        ++count;
    if (!error) return count;
#endif
    return std::nullopt;
}

void announceActive(AppState& state, std::ostream& out) {
    std::string name = "none";
    if (const auto& active = state.activeProfileId())
        for (const auto& profile : state.profiles())
            if (profile.id == *active) name = "\"" + profile.name + "\"";
    out << "Active workspace: " << name << std::endl;
}

void runAgent(ToolContext& context, bool verbose) {
    auto dataDirectory = context.dataDirectory();
    {
        // First, so that every thread started below leaves the two signals to this one.
        std::atomic<MainLoop*> loop{nullptr};
        std::atomic<bool> stopRequested{false};
        TerminationSignals signals([&](int) {
            stopRequested = true;
            if (auto* running = loop.load()) running->stop();
        });
        std::optional<std::filesystem::path> dockPlist;
        if (context.dockPlistOption) dockPlist = *context.dockPlistOption;
        auto environment = context.services.environment;
        auto live = std::make_unique<LivePlatform>(LivePlatform::Options{
            .environment = environment,
            .dataDirectory = dataDirectory,
            .dockPlist = dockPlist,
            .logsToStderr = verbose || environment.contains("CORVANE_LOG"),
        });
        auto& out = context.out;
        AppHost host(live->platform(), dataDirectory);
        auto& state = host.state();
        state.callbacks.onWorkspaceSwitch = [&state, &out] { announceActive(state, out); };
        if (state.isDegraded())
            out << "The data folder " << dataDirectory << " cannot be used; running without saving anything."
                << std::endl;
        out << "Corvane is running on " << dataDirectory << "; stop it with Ctrl-C." << std::endl;
        announceActive(state, out);
        // Set before the flag is read, so a signal that came early is seen one way or the other.
        loop = &live->mainLoop();
        if (!stopRequested) live->mainLoop().run();
        host.shutDown();
        out << "Stopped." << std::endl;
    }
    if (auto threads = threadCount(); threads && *threads > 1)
        throw std::runtime_error(std::to_string(*threads - 1) + " threads were still running after the agent stopped");
}

} // namespace

void addAgentCommand(CLI::App& app, ToolContext& context) {
    auto verbose = std::make_shared<bool>(false);
    auto* agent = app.add_subcommand(
        "agent", "Run Corvane's application state in the foreground until Ctrl-C or SIGTERM: it follows switches "
                 "made by other processes, and takes a backup when it stops");
    agent->add_flag("--verbose", *verbose, "Write the log to stderr");
    agent->callback([&context, verbose] { runAgent(context, *verbose); });
}

} // namespace corvane
