#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace corvane {

/// A call decoded into the command line it stands for, or the one-line reason it cannot be one.
struct DecodedCall {
    std::vector<std::string> arguments;
    /// The command prints JSON (it was given `--json`), so its output is the reply.
    bool printsJson = false;
    std::string error;
    int status = 200;
};

/// Adds to a parser the commands that a call's first word may name.
using CommandsFor = std::function<void(CLI::App& app, const std::string& firstWord)>;

/// Turns `WORDS` ("widgets/add") and a JSON object of parameters into a command line of the
/// commands `addCommands` makes: keys are the command's options without dashes ("color",
/// "from-dock", "span") and its positional arguments by their help name in lower case
/// ("workspace", "name"). Flags take true or false, options a string or a number, and repeated
/// ones an array; "stdin" is left for the caller. A command with a `--json` flag gets it.
DecodedCall decodeCall(std::string_view words, std::string_view body, const CommandsFor& addCommands);

} // namespace corvane
