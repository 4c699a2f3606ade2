#include "CorvaneApp/cli/AgentCommand.hpp"

#include "CorvaneApp/api/ApiServer.hpp"
#include "CorvaneApp/api/CommandApi.hpp"
#include "CorvaneApp/cli/LiveReaders.hpp"
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

/// Opens `url` in the default browser.
void openInBrowser(ToolContext& context, const std::string& url) {
#ifdef __APPLE__
    std::string opener = "/usr/bin/open";
#else
    std::string opener = "/usr/bin/xdg-open";
#endif
    try {
        context.services.runner.run(
            {.executable = opener, .arguments = {url}, .environment = context.services.environment, .timeout = 10});
    } catch (const std::exception&) {
        // The address is printed above, for opening by hand.
    }
}

struct Window {
    int port = 0;
    bool opens = false;
};

/// The agent; with a window, it also serves the window's pages and calls on the loopback address.
void runAgent(ToolContext& context, bool verbose, std::optional<Window> window = std::nullopt) {
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
        std::optional<CommandApi> api;
        std::optional<ApiServer> server;
        // The window's calls write the data files; the state looks at them at once.
        std::atomic<AppHost*> following{nullptr};
        std::atomic<MainQueue*> mainQueue{nullptr};
        auto follow = [&following, &mainQueue] {
            auto* queue = mainQueue.load();
            if (!queue) return;
            queue->post([&following] {
                if (auto* host = following.load()) host->lookAtDataFiles();
            });
        };
        if (window) {
            api.emplace(context.services, CommandApi::Options{dataDirectory, dockPlist, follow});
            server.emplace(*api, makeSecret(), window->port);
            std::string error;
            if (!server->start(error)) throw std::runtime_error("the window cannot be served: " + error);
            context.out << server->url() << std::endl;
            if (window->opens) openInBrowser(context, server->url());
        }
        auto environment = context.services.environment;
        auto live = std::make_unique<LivePlatform>(LivePlatform::Options{
            .environment = environment,
            .dataDirectory = dataDirectory,
            .dockPlist = dockPlist,
            .logsToStderr = verbose || environment.contains("CORVANE_LOG"),
            .connectWidgets = [&context](LiveWidgetPorts& ports) { addConnectedReaders(ports, context); },
        });
        auto& out = context.out;
        AppHost host(live->platform(), dataDirectory);
        mainQueue = &live->platform().mainQueue;
        following = &host;
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
        if (server) server->stop();
        following = nullptr;
        mainQueue = nullptr;
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

    struct UiArguments {
        int port = 0;
        bool opens = false;
        bool verbose = false;
    };
    auto args = std::make_shared<UiArguments>();
    auto* ui = app.add_subcommand(
        "ui", "Run Corvane as agent does, and serve its window on 127.0.0.1: the first line printed is the "
              "address to open, with a secret that changes every run");
    ui->add_option("--port", args->port, "The port (default: a free one)")->check(CLI::Range(0, 65535));
    ui->add_flag("--open", args->opens, "Open the window in the default browser");
    ui->add_flag("--verbose", args->verbose, "Write the log to stderr");
    ui->callback([&context, args] { runAgent(context, args->verbose, Window{args->port, args->opens}); });
}

} // namespace corvane
