#include "CorvaneApp/api/CallDecoding.hpp"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace corvane {

namespace {

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
std::optional<std::string> argumentText(const nlohmann::json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (value.is_number_integer() || value.is_number_unsigned()) return value.dump();
    if (value.is_number_float()) return value.dump();
    if (value.is_boolean()) return value.get<bool>() ? "true" : "false";
    return std::nullopt;
}

bool isFlag(const CLI::Option& option) { return option.get_expected_max() == 0; }

/// A name the caller sent, quoted and escaped so that the error stays one line.
std::string asSent(std::string_view text) {
    return nlohmann::json(std::string(text)).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace

DecodedCall decodeCall(std::string_view words, std::string_view body, const CommandsFor& addCommands) {
    auto path = splitWords(words);
    if (path.empty() || words.ends_with('/') || !std::all_of(path.begin(), path.end(), isWord))
        return refused(404, "there is no command " + asSent(words));

    nlohmann::json parameters = nlohmann::json::object();
    if (!body.empty()) {
        parameters = nlohmann::json::parse(body, nullptr, false);
        if (parameters.is_discarded() || !parameters.is_object())
            return refused(400, "the parameters must be one JSON object");
    }

    CLI::App app;
    addCommands(app, path.front());
    CLI::App* command = &app;
    for (const auto& word : path) {
        command = subcommandNamed(*command, word);
        if (!command) return refused(404, "there is no command " + asSent(words));
    }

    DecodedCall call;
    call.arguments = path;
    std::vector<std::pair<const CLI::Option*, const nlohmann::json*>> positionals;
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
            return refused(400, "corvane " + std::string(words) + " has no parameter " + asSent(key));
        if (value.is_null()) continue;
        if (option->get_positional() && option->get_lnames().empty()) {
            positionals.emplace_back(option, &value);
            continue;
        }
        const auto& longName = option->get_lnames().front();
        if (isFlag(*option)) {
            if (!value.is_boolean()) return refused(400, asSent(key) + " takes true or false");
            if (value.get<bool>()) call.arguments.push_back("--" + longName);
            if (option == jsonFlag) call.printsJson = value.get<bool>();
            continue;
        }
        auto values = value.is_array() ? value : nlohmann::json::array({value});
        if (values.size() > 1 && option->get_expected_max() < 2 &&
            option->get_multi_option_policy() == CLI::MultiOptionPolicy::Throw)
            return refused(400, asSent(key) + " takes one value");
        for (const auto& each : values) {
            auto text = argumentText(each);
            if (!text) return refused(400, asSent(key) + " takes text or a number");
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
        auto values = value->is_array() ? *value : nlohmann::json::array({*value});
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

} // namespace corvane
