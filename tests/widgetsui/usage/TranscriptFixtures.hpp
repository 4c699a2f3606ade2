#pragma once

#include "CorvaneCore/support/Iso8601.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <chrono>
#include <filesystem>
#include <string>

namespace corvane {

/// A moment in June 2025, `hours` after the tests' reference.
inline Date june(double hours) { return Date::fromUnixTime(1749556800 + hours * 3600); }

/// An assistant line as Claude Code writes it.
inline std::string assistantLine(const std::string& requestId, Date at, int input, int output, int written = 0,
                                 int read = 0) {
    return R"({"parentUuid":"p","isSidechain":false,"type":"assistant","message":{"id":"msg_)" + requestId +
           R"(","type":"message","role":"assistant","content":[{"type":"text","text":"Done."}],"usage":{"input_tokens":)" +
           std::to_string(input) + R"(,"cache_creation_input_tokens":)" + std::to_string(written) +
           R"(,"cache_read_input_tokens":)" + std::to_string(read) + R"(,"output_tokens":)" + std::to_string(output) +
           R"(,"service_tier":"standard"}},"requestId":"req_)" + requestId + R"(","uuid":"u-)" + requestId +
           R"(","timestamp":")" + iso8601(at) + "\"}\n";
}

/// A user line carrying a tool result of `size` bytes and no usage.
inline std::string userLine(Date at, std::size_t size) {
    return R"({"type":"user","message":{"role":"user","content":[{"type":"tool_result","content":")" +
           std::string(size, 'x') + R"("}]},"uuid":"u","timestamp":")" + iso8601(at) + "\"}\n";
}

inline void setModified(const std::filesystem::path& file, Date date) {
    using namespace std::chrono;
    auto system = sys_time<nanoseconds>(duration_cast<nanoseconds>(duration<double>(date.unixTime())));
    std::filesystem::last_write_time(file, file_clock::from_sys(system));
}

inline void append(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary | std::ios::app) << text;
}

} // namespace corvane
