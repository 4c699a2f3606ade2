#pragma once

// A made-up folder of Claude Code transcripts shaped like real ones: one folder per project, one
// JSON-lines file per session, sessions spread over weeks. Users' lines carry large tool results
// (and their copy in "toolUseResult"); the assistant's lines carry usage, written again for
// every content block while the message streams, with the output count growing. A few lines are
// broken. Each file's modification date is its last line's, as Claude Code leaves it.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace corvane::bench {

struct CorpusOptions {
    /// The transcripts folder (what Claude Code calls ".claude/projects").
    std::filesystem::path root;
    std::uint64_t bytes = 1ull << 30;
    int days = 60;
    int projects = 40;
    /// Seconds since 1970 of the newest possible line.
    double now = 0;
    unsigned seed = 1;
};

struct CorpusSummary {
    std::uint64_t bytes = 0;
    int sessions = 0;
    std::uint64_t lines = 0;
};

class CorpusWriter {
public:
    explicit CorpusWriter(const CorpusOptions& options) : options_(options), random_(options.seed) { makeText(); }

    CorpusSummary write() {
        CorpusSummary summary;
        std::vector<std::string> folders;
        for (int p = 0; p < options_.projects; ++p) {
            std::string folder = "-Users-ann-src-" + words_[p % words_.size()] + (p >= 20 ? "-" + std::to_string(p) : "");
            if (p % 5 == 4) folder += "-" + hex(6); // a generated suffix, as worktrees get
            folders.push_back(folder);
            std::filesystem::create_directories(options_.root / folder);
        }
        std::lognormal_distribution<double> sessionSize(std::log(400'000.0), 1.1);
        const double span = options_.days * 86400.0;
        while (summary.bytes < options_.bytes) {
            // Busier projects get more sessions.
            const auto project = static_cast<std::size_t>(std::min<double>(
                options_.projects - 1, std::floor(std::pow(uniform(), 2) * options_.projects)));
            const auto target = static_cast<std::uint64_t>(std::clamp(sessionSize(random_), 2'000.0, 40'000'000.0));
            const double start = options_.now - span + uniform() * (span - 600);
            std::string text;
            double last = session(text, target, start, "/Users/ann/src/" + words_[project % words_.size()], summary.lines);
            auto file = options_.root / folders[project] / (uuid() + ".jsonl");
            std::ofstream(file, std::ios::binary) << text;
            setModified(file, last);
            summary.bytes += text.size();
            ++summary.sessions;
        }
        return summary;
    }

    /// Lines of one session from `start` until it holds `target` bytes or reaches `now`; returns
    /// the last line's time.
    double session(std::string& out, std::uint64_t target, double start, const std::string& cwd, std::uint64_t& lines) {
        const std::string sessionId = uuid();
        double t = start;
        std::string parent = "null";
        auto common = [&](const std::string& uuidText) {
            std::string s = R"({"parentUuid":)" + parent + R"(,"isSidechain":false,"userType":"external","cwd":")" + cwd +
                            R"(","sessionId":")" + sessionId + R"(","version":"1.0.51","gitBranch":"main",)";
            parent = "\"" + uuidText + "\"";
            return s;
        };
        while (out.size() < target && t < options_.now) {
            // A prompt, then a few tool steps, each streamed as several records of one message.
            std::string id = uuid();
            out += common(id) + R"("type":"user","message":{"role":"user","content":")" + slice(200 + below(1800)) +
                   R"("},"uuid":")" + id + R"(","timestamp":")" + stamp(t) + "\"}\n";
            ++lines;
            const int steps = 1 + static_cast<int>(below(6));
            std::int64_t context = 10'000 + static_cast<std::int64_t>(below(60'000));
            for (int step = 0; step <= steps && t < options_.now; ++step) {
                t += 1 + uniform() * 20;
                const std::string messageId = "msg_01" + hex(22), requestId = "req_011C" + hex(20);
                const int blocks = 1 + static_cast<int>(below(3));
                const std::int64_t written = static_cast<std::int64_t>(below(5000));
                for (int block = 0; block < blocks; ++block) {
                    const std::string uuidText = uuid();
                    std::string content =
                        block + 1 < blocks || step == steps
                            ? R"({"type":"text","text":")" + slice(100 + below(1500)) + "\"}"
                            : R"({"type":"tool_use","id":"toolu_01)" + hex(20) + R"(","name":"Read","input":{"file_path":")" +
                                  cwd + "/src/" + words_[below(words_.size())] + R"(.cpp"}})";
                    out += common(uuidText) + R"("message":{"id":")" + messageId +
                           R"(","type":"message","role":"assistant","model":"claude-sonnet-4-20250514","content":[)" +
                           content + R"(],"stop_reason":null,"stop_sequence":null,"usage":{"input_tokens":)" +
                           std::to_string(1 + below(9)) + R"(,"cache_creation_input_tokens":)" + std::to_string(written) +
                           R"(,"cache_read_input_tokens":)" + std::to_string(context) + R"(,"output_tokens":)" +
                           std::to_string(1 + block * 40 + below(30)) +
                           R"(,"service_tier":"standard"}},"requestId":")" + requestId +
                           R"(","type":"assistant","uuid":")" + uuidText + R"(","timestamp":")" + stamp(t) + "\"}\n";
                    ++lines;
                }
                context += written;
                if (step == steps) break;
                t += 0.5 + uniform() * 4;
                // Tool results: mostly small, some large, a few huge; Claude Code keeps a copy.
                const double roll = uniform();
                const auto size = roll < 0.78 ? 500 + below(4500) : roll < 0.98 ? 5'000 + below(35'000) : 60'000 + below(240'000);
                const std::string result = slice(size), resultUuid = uuid();
                out += common(resultUuid) + R"("type":"user","message":{"role":"user","content":[{"tool_use_id":"toolu_01)" +
                       hex(20) + R"(","type":"tool_result","content":")" + result + R"("}]},"uuid":")" + resultUuid +
                       R"(","timestamp":")" + stamp(t) + R"(","toolUseResult":{"type":"text","file":{"content":")" + result +
                       "\"}}}\n";
                ++lines;
                if (below(400) == 0) {
                    // A line cut short by a crash, or noise.
                    out += below(2) ? out.substr(out.rfind('\n', out.size() - 2) + 1, 90) + "\n" : "\x01garbage {\"usage\"\n";
                    ++lines;
                }
            }
            if (below(40) == 0) {
                out += R"({"type":"summary","summary":"Work on )" + words_[below(words_.size())] + R"(","leafUuid":")" +
                       uuid() + "\"}\n";
                ++lines;
            }
            // Pauses between prompts; now and then the session is resumed hours later.
            t += below(12) == 0 ? 3600 * (2 + uniform() * 20) : 30 + uniform() * 900;
        }
        return t;
    }

    static void setModified(const std::filesystem::path& file, double unixTime) {
        using namespace std::chrono;
        auto system = sys_time<nanoseconds>(duration_cast<nanoseconds>(duration<double>(unixTime)));
        std::filesystem::last_write_time(file, file_clock::from_sys(system));
    }

    std::string stamp(double unixTime) {
        const auto seconds = static_cast<std::time_t>(std::floor(unixTime));
        std::tm utc{};
        gmtime_r(&seconds, &utc);
        char buffer[96];
        std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", utc.tm_year + 1900, utc.tm_mon + 1,
                      utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec,
                      static_cast<int>((unixTime - std::floor(unixTime)) * 1000));
        return buffer;
    }

private:
    double uniform() { return std::uniform_real_distribution<double>(0, 1)(random_); }
    std::uint64_t below(std::uint64_t n) { return std::uniform_int_distribution<std::uint64_t>(0, n - 1)(random_); }

    std::string hex(int digits) {
        static constexpr char alphabet[] = "0123456789abcdef";
        std::string s;
        for (int i = 0; i < digits; ++i) s += alphabet[below(16)];
        return s;
    }
    std::string uuid() { return hex(8) + "-" + hex(4) + "-4" + hex(3) + "-a" + hex(3) + "-" + hex(12); }

    /// JSON string content of about `size` bytes, never splitting an escape.
    std::string slice(std::uint64_t size) {
        size = std::min<std::uint64_t>(size, text_.size() / 2);
        auto from = below(text_.size() - size);
        auto to = from + size;
        if (from > 0 && text_[from - 1] == '\\') ++from;
        if (text_[to - 1] == '\\') --to;
        return text_.substr(from, to - from);
    }

    void makeText() {
        words_ = {"atlas", "corvane", "harbor", "lumen", "quartz", "nimbus", "orchid", "pylon", "ember", "tundra",
                  "vector", "bramble", "cobalt", "delta", "fjord", "garnet", "helix", "iris", "juniper", "kestrel",
                  "struct", "return", "const", "auto", "template", "include", "namespace", "void", "if", "for",
                  "usage", "tokens", "value", "error", "string", "count", "index", "buffer", "result", "config"};
        // Code-like text as it sits inside a JSON string: escaped quotes, line breaks and tabs.
        while (text_.size() < (8u << 20)) {
            const auto roll = below(20);
            if (roll == 0)
                text_ += "\\n";
            else if (roll == 1)
                text_ += "\\\"";
            else if (roll == 2)
                text_ += "\\t";
            else if (roll == 3)
                text_ += "();";
            else
                text_ += words_[below(words_.size())] + " ";
        }
    }

    CorpusOptions options_;
    std::mt19937_64 random_;
    std::vector<std::string> words_;
    std::string text_;
};

} // namespace corvane::bench
