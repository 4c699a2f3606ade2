#pragma once

#include "CorvaneApp/cli/ToolContext.hpp"

#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What a call answers: an HTTP-like status and a JSON body.
struct ApiReply {
    int status = 200;
    std::string body;
};

/// A call decoded into the command line it stands for, or the one-line reason it cannot be one.
struct DecodedCall {
    std::vector<std::string> arguments;
    /// The command prints JSON (it was given `--json`), so its output is the reply.
    bool printsJson = false;
    std::string error;
    int status = 200;
};

/// Turns `WORDS` ("widgets/add") and a JSON object of parameters into the tool's command line:
/// keys are the command's options without dashes ("color", "from-dock", "span") and its
/// positional arguments by their help name in lower case ("workspace", "name"). Flags take true
/// or false, options a string or a number, and repeated ones an array.
DecodedCall decodeCall(std::string_view words, std::string_view body, ToolServices& services);

/// The tool's commands as calls that take and give JSON: the vocabulary the window speaks. Each
/// call runs the very command the terminal runs, on the same data folder, one at a time.
class CommandApi {
public:
    struct Options {
        std::filesystem::path dataDirectory;
        /// A Dock preferences file to work on instead of the live Dock.
        std::optional<std::filesystem::path> dockPlist;
    };

    CommandApi(ToolServices& services, Options options);

    /// Runs one call. Success answers 200 with what the command printed with `--json`, or
    /// {"ok": true, "message": ...} (plus "id" for what it made, "image" as a data URL for a
    /// picture). A command that fails answers 4xx with {"error": "one line"}, an unknown one 404.
    ApiReply call(std::string_view words, std::string_view body);

private:
    ToolServices& services_;
    Options options_;
    std::mutex mutex_;
};

} // namespace corvane
