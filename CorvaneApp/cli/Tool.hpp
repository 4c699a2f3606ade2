#pragma once

#include "CorvaneApp/cli/ToolContext.hpp"

#include <iosfwd>
#include <map>
#include <string>
#include <span>
#include <string_view>

namespace CLI {
class App;
}

namespace corvane {

/// Commands that are added to the parser together.
struct CommandGroup {
    /// The group's top-level command words, aliases included, separated by spaces.
    std::string_view words;
    void (*add)(CLI::App& app, ToolContext& context);
};

/// The tool's version, as the build names it.
std::string_view toolVersion();

/// Every command of the tool, in the order of its help.
std::span<const CommandGroup> commandGroups();

/// Where one run of the tool reads and writes, and what it made.
struct ToolStreams {
    std::ostream& out;
    std::ostream& err;
    std::istream* in = nullptr;
    std::map<std::string, std::string> made;
};

/// Runs one command line of the `corvane` tool: 0 on success, 1 when the command failed,
/// 2 for a usage error. Errors are one line on `err`, "corvane: " + the message.
int runTool(int argc, const char* const* argv, ToolServices& services, std::ostream& out, std::ostream& err);
int runTool(int argc, const char* const* argv, ToolServices& services, ToolStreams& streams);

} // namespace corvane
