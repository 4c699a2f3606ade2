// The window's calls: command words, a line break, then the JSON parameters. Whatever decodes is
// a command line that starts with the words, carries only the command's own options before
// "--", and gets --json exactly when it says the command prints JSON. The commands are a few of
// the shapes the tool's have: aliases, flags, repeated and optional positionals, subcommands.

#include "CorvaneApp/api/CallDecoding.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>

using namespace corvane;

namespace {

void addCommands(CLI::App& app, const std::string&) {
    static std::string text;
    static std::vector<std::string> texts;
    static bool flag = false;
    static int number = 0;
    auto* rename = app.add_subcommand("rename");
    rename->add_option("WORKSPACE", text)->required();
    rename->add_option("NAME", text)->required();
    auto* create = app.add_subcommand("new");
    create->add_option("NAME", text)->required();
    create->add_option("--color,--colour", text);
    create->add_flag("--from-dock", flag);
    auto* widgets = app.add_subcommand("widgets");
    widgets->add_flag("--json", flag);
    auto* add = widgets->add_subcommand("add");
    add->add_option("KIND", text)->required();
    add->add_option("--span", number);
    auto* stack = widgets->add_subcommand("stack");
    stack->add_option("WORKSPACE", text)->required();
    stack->add_option("WIDGET", texts)->required();
    auto* exporting = app.add_subcommand("export");
    exporting->add_option("FILE", text)->required();
    exporting->add_option("WORKSPACE", texts);
    exporting->add_option("-o,--output", text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto input = fuzz::text(data, size);
    auto split = input.find('\n');
    auto words = input.substr(0, split);
    auto body = split == std::string_view::npos ? std::string_view() : input.substr(split + 1);

    auto call = decodeCall(words, body, addCommands);
    if (!call.error.empty()) {
        FUZZ_CHECK(call.status >= 400 && call.status < 500);
        FUZZ_CHECK(call.error.find('\n') == std::string::npos);
        return 0;
    }
    std::string joined;
    std::size_t index = 0;
    for (; index < call.arguments.size() && !call.arguments[index].starts_with("-"); ++index)
        joined += (joined.empty() ? "" : "/") + call.arguments[index];
    FUZZ_CHECK(joined == words);
    for (; index < call.arguments.size() && call.arguments[index] != "--"; ++index) {
        const auto& option = call.arguments[index];
        FUZZ_CHECK(option.starts_with("--"));
        FUZZ_CHECK(!option.starts_with("--help"));
    }
    auto json = std::find(call.arguments.begin(), call.arguments.end(), "--json") != call.arguments.end();
    FUZZ_CHECK(json == call.printsJson);
    return 0;
}
