#pragma once

#include "CorvaneCore/platform/Log.hpp"

#include <mutex>

namespace corvane {

/// Writes log lines to stderr when asked to (`CORVANE_LOG=1`, or `verbose`); silent otherwise,
/// so that the command-line tool's output stays clean.
class StderrLog final : public Log {
public:
    explicit StderrLog(bool verbose) : verbose_(verbose) {}
    void write(Level level, const std::string& category, const std::string& message) override;

private:
    bool verbose_;
    std::mutex mutex_;
};

} // namespace corvane
