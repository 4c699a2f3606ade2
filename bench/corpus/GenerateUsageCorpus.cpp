// Writes a made-up Claude Code transcripts folder for the usage comparison:
//   generate-usage-corpus --root DIR [--size-mb N] [--days N] [--projects N] [--seed N] [--now UNIX]

#include "UsageCorpus.hpp"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
    using namespace corvane::bench;
    CorpusOptions options;
    options.now = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    for (int i = 1; i + 1 < argc; i += 2) {
        std::string name = argv[i], value = argv[i + 1];
        if (name == "--root")
            options.root = value;
        else if (name == "--size-mb")
            options.bytes = std::stoull(value) << 20;
        else if (name == "--days")
            options.days = std::stoi(value);
        else if (name == "--projects")
            options.projects = std::stoi(value);
        else if (name == "--seed")
            options.seed = static_cast<unsigned>(std::stoul(value));
        else if (name == "--now")
            options.now = std::stod(value);
        else {
            std::cerr << "generate-usage-corpus: unknown option " << name << "\n";
            return 2;
        }
    }
    if (options.root.empty()) {
        std::cerr << "usage: generate-usage-corpus --root DIR [--size-mb N] [--days N] [--projects N] [--seed N] "
                     "[--now UNIX]\n";
        return 2;
    }
    auto summary = CorpusWriter(options).write();
    std::cout << summary.sessions << " sessions, " << summary.lines << " lines, " << (summary.bytes >> 20) << " MiB in "
              << options.root.string() << "\n";
}
