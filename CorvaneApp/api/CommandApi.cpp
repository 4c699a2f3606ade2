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

DecodedCall refused(int status, std::string error) {
    DecodedCall call;
    call.status = status;
    call.error = std::move(error);
    return call;
}

std::vector<std::string> splitWords(std::string_view words) {
    std::vector<std::string> result;
    while (!words.empty()) {
        auto end = words.find('/');
        result.emplace_back(words.substr(0, end));
        words.remove_prefix(end == std::string_view::npos ? words.size() : end + 1);
    }
    return result;
}

bool isWord(const std::string& word) {
    return !word.empty() && word.size() <= 40 && word.front() != '-' &&
           std::all_of(word.begin(), word.end(), [](char c) { return (c >= 'a' && c <= 'z') || c == '-'; });
}

bool groupNames(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        auto end = words.find(' ');
        if (words.substr(0, end) == word) return true;
        words.remove_prefix(end == std::string_view::npos ? words.size() : end + 1);
    }
    return false;
}

CLI::App* subcommandNamed(CLI::App& parent, const std::string& word) {
    for (auto* sub : parent.get_subcommands({}))
        if (sub->check_name(word)) return sub;
    return nullptr;
}

std::string lowercase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c); });
    return text;
}

/// The command-line text of one parameter value; none for a value no argument can carry.
std::optional<std::string> argumentText(const Json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (value.is_number_integer() || value.is_number_unsigned()) return value.dump();
    if (value.is_number_float()) return value.dump();
    if (value.is_boolean()) return value.get<bool>() ? "true" : "false";
    return std::nullopt;
}

bool isFlag(const CLI::Option& option) { return option.get_expected_max() == 0; }

} // namespace

DecodedCall decodeCall(std::string_view words, std::string_view body, ToolServices& services) {
    auto path = splitWords(words);
    if (path.empty() || words.ends_with('/') || !std::all_of(path.begin(), path.end(), isWord) ||
        std::find(std::begin(longRunning), std::end(longRunning), path.front()) != std::end(longRunning))
        return refused(404, "there is no command \"" + std::string(words) + "\"");

    Json parameters = Json::object();
    if (!body.empty()) {
        parameters = Json::parse(body, nullptr, false);
        if (parameters.is_discarded() || !parameters.is_object())
            return refused(400, "the parameters must be one JSON object");
    }

    // The parser of the named command, built only to read its options: nothing is parsed or run.
    std::ostringstream unused;
    ToolContext context{services, unused, std::nullopt, std::nullopt, nullptr, {}};
    CLI::App app;
    for (const auto& group : commandGroups())
        if (groupNames(group.words, path.front())) group.add(app, context);
    CLI::App* command = &app;
    for (const auto& word : path) {
        command = subcommandNamed(*command, word);
        if (!command) return refused(404, "there is no command \"" + std::string(words) + "\"");
    }

    DecodedCall call;
    call.arguments = path;
    std::vector<std::pair<const CLI::Option*, const Json*>> positionals;
    const CLI::Option* jsonFlag = nullptr;
    for (const auto* option : command->get_options()) {
        const auto& names = option->get_lnames();
        if (std::find(names.begin(), names.end(), "json") != names.end() && isFlag(*option)) jsonFlag = option;
    }

    for (const auto& [key, value] : parameters.items()) {
        if (key == "stdin") continue;
        const CLI::Option* option = nullptr;
        for (const auto* candidate : command->get_options()) {
            if (candidate == command->get_help_ptr() || candidate == command->get_help_all_ptr()) continue;
            const auto& names = candidate->get_lnames();
            bool named = candidate->get_positional() && names.empty()
                             ? lowercase(candidate->get_name()) == key
                             : std::find(names.begin(), names.end(), key) != names.end();
            if (named) {
                option = candidate;
                break;
            }
        }
        if (!option)
            return refused(400, "corvane " + std::string(words) + " has no parameter \"" + key + "\"");
        if (value.is_null()) continue;
        if (option->get_positional() && option->get_lnames().empty()) {
            positionals.emplace_back(option, &value);
            continue;
        }
        const auto& longName = option->get_lnames().front();
        if (isFlag(*option)) {
            if (!value.is_boolean()) return refused(400, "\"" + key + "\" takes true or false");
            if (value.get<bool>()) call.arguments.push_back("--" + longName);
            if (option == jsonFlag) call.printsJson = value.get<bool>();
            continue;
        }
        auto values = value.is_array() ? value : Json::array({value});
        if (values.size() > 1 && option->get_expected_max() < 2 &&
            option->get_multi_option_policy() == CLI::MultiOptionPolicy::Throw)
            return refused(400, "\"" + key + "\" takes one value");
        for (const auto& each : values) {
            auto text = argumentText(each);
            if (!text) return refused(400, "\"" + key + "\" takes text or a number");
            call.arguments.push_back("--" + longName + "=" + *text);
        }
    }
    if (jsonFlag && !parameters.contains("json")) {
        call.arguments.push_back("--json");
        call.printsJson = true;
    }

    // After "--", so that a value that starts with a dash is still a value. In the order the
    // command takes them, which is the order its options were made.
    std::stable_sort(positionals.begin(), positionals.end(), [&](const auto& a, const auto& b) {
        const auto& all = command->get_options();
        return std::find(all.begin(), all.end(), a.first) < std::find(all.begin(), all.end(), b.first);
    });
    if (!positionals.empty()) call.arguments.push_back("--");
    for (const auto& [option, value] : positionals) {
        auto values = value->is_array() ? *value : Json::array({*value});
        if (values.size() > 1 && option->get_expected_max() < 2)
            return refused(400, "\"" + lowercase(option->get_name()) + "\" takes one value");
        for (const auto& each : values) {
            auto text = argumentText(each);
            if (!text) return refused(400, "\"" + lowercase(option->get_name()) + "\" takes text or a number");
            call.arguments.push_back(*text);
        }
    }
    return call;
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
