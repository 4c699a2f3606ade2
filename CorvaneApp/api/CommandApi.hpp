#pragma once

#include "CorvaneApp/api/CallDecoding.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"

#include <filesystem>
#include <functional>
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

/// A call decoded against the tool's own commands (`agent` and `ui`, which run until stopped,
/// are none).
DecodedCall decodeCall(std::string_view words, std::string_view body, ToolServices& services);

/// The tool's commands as calls that take and give JSON: the vocabulary the window speaks. Each
/// call runs the very command the terminal runs, on the same data folder, one at a time.
class CommandApi {
public:
    struct Options {
        std::filesystem::path dataDirectory;
        /// A Dock preferences file to work on instead of the live Dock.
        std::optional<std::filesystem::path> dockPlist;
        /// Runs after every call that succeeded, on the caller's thread: a host that keeps the
        /// application's state looks at the data files at once, so the bar and the menu follow
        /// the window without waiting for their next look.
        std::function<void()> afterCall;
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
