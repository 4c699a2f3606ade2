#pragma once

#include "CorvaneApp/cli/ToolContext.hpp"

#include <iosfwd>

namespace corvane {

/// Runs one command line of the `corvane` tool: 0 on success, 1 when the command failed,
/// 2 for a usage error. Errors are one line on `err`, "corvane: " + the message.
int runTool(int argc, const char* const* argv, ToolServices& services, std::ostream& out, std::ostream& err);

} // namespace corvane
