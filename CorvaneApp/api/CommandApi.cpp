#include "CorvaneApp/api/CommandApi.hpp"

#include "CorvaneApp/cli/Tool.hpp"
#include "CorvaneCore/support/Base64.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

namespace corvane {

namespace {

// Commands that run until they are stopped, and so are no calls.
constexpr std::string_view longRunning[] = {"agent", "ui"};

bool groupNames(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        auto end = words.find(' ');
        if (words.substr(0, end) == word) return true;
        words.remove_prefix(end == std::string_view::npos ? words.size() : end + 1);
    }
    return false;
}

} // namespace

DecodedCall decodeCall(std::string_view words, std::string_view body, ToolServices& services) {
    auto first = words.substr(0, words.find('/'));
    if (std::find(std::begin(longRunning), std::end(longRunning), first) != std::end(longRunning)) {
        DecodedCall refused;
        refused.status = 404;
        refused.error = "there is no command \"" + std::string(first) + "\"";
        return refused;
    }
    // The parser of the named command, built only to read its options: nothing is parsed or run.
    std::ostringstream unused;
    ToolContext context{services, unused, std::nullopt, std::nullopt, nullptr, {}};
    return decodeCall(words, body, [&](CLI::App& app, const std::string& word) {
        for (const auto& group : commandGroups())
            if (groupNames(group.words, word)) group.add(app, context);
    });
}

CommandApi::CommandApi(ToolServices& services, Options options) : services_(services), options_(std::move(options)) {}

namespace {

std::string errorBody(const std::string& message) { return Json::object({{"error", message}}).dump(); }

/// The message of the tool's error output: its first line, without the program's name.
std::string errorMessage(const std::string& err) {
    auto line = err.substr(0, err.find('\n'));
    constexpr std::string_view prefix = "corvane: ";
    if (line.starts_with(prefix)) line.erase(0, prefix.size());
    return line.empty() ? "the command failed" : line;
}

std::string trimmedOutput(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.pop_back();
    return text;
}

} // namespace

ApiReply CommandApi::call(std::string_view words, std::string_view body) {
    std::lock_guard lock(mutex_);
    auto decoded = decodeCall(words, body, services_);
    if (!decoded.error.empty()) return {decoded.status, errorBody(decoded.error)};

    std::string input;
    if (!body.empty()) {
        auto parameters = Json::parse(body, nullptr, false);
        if (auto found = parameters.find("stdin"); found != parameters.end() && found->is_string())
            input = found->get<std::string>();
    }

    std::vector<std::string> arguments{"corvane", "--data-dir=" + options_.dataDirectory.string()};
    if (options_.dockPlist) arguments.push_back("--dock-plist=" + options_.dockPlist->string());
    arguments.insert(arguments.end(), decoded.arguments.begin(), decoded.arguments.end());
    std::vector<const char*> argv;
    for (const auto& argument : arguments) argv.push_back(argument.c_str());

    std::ostringstream out, err;
    std::istringstream in(input);
    ToolStreams streams{out, err, &in, {}};
    int status = runTool(static_cast<int>(argv.size()), argv.data(), services_, streams);
    if (status == 2) return {400, errorBody(errorMessage(err.str()))};
    if (status != 0) return {422, errorBody(errorMessage(err.str()))};
    if (options_.afterCall) options_.afterCall();

    auto printed = out.str();
    if (decoded.printsJson) {
        if (Json::accept(printed)) return {200, printed};
        return {500, errorBody("the command printed something that is not JSON")};
    }
    constexpr std::string_view pngSignature = "\x89PNG\r\n\x1a\n";
    if (printed.starts_with(pngSignature)) {
        auto image = "data:image/png;base64," + base64Encode(Bytes(printed.begin(), printed.end()));
        return {200, Json::object({{"ok", true}, {"image", image}}).dump()};
    }
    auto text = trimmedOutput(printed);
    // What a command writes to "-" as JSON (an export) is the answer itself.
    if ((text.starts_with("{") || text.starts_with("[")) && Json::accept(text)) return {200, text};
    auto reply = Json::object({{"ok", true}, {"message", text}});
    for (const auto& [name, value] : streams.made) reply[name] = value;
    return {200, reply.dump()};
}

} // namespace corvane
