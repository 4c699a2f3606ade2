// The window's calls: command words, a line break, then the JSON parameters. Whatever decodes is
// a command line that starts with the words, carries only the command's own options before
// "--", and never the host's global ones.

#include "CorvaneApp/api/CommandApi.hpp"
#include "CorvaneApp/cli/SystemToolServices.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <algorithm>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static SystemToolServices system;
    auto input = fuzz::text(data, size);
    auto split = input.find('\n');
    auto words = input.substr(0, split);
    auto body = split == std::string_view::npos ? std::string_view() : input.substr(split + 1);

    auto call = decodeCall(words, body, system.services());
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
        FUZZ_CHECK(!option.starts_with("--data-dir") && !option.starts_with("--dock-plist"));
        FUZZ_CHECK(!option.starts_with("--help"));
    }
    auto json = std::find(call.arguments.begin(), call.arguments.end(), "--json") != call.arguments.end();
    FUZZ_CHECK(json == call.printsJson);
    return 0;
}
