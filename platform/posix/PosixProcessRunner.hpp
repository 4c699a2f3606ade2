#pragma once

#include "CorvaneCore/platform/ProcessRunner.hpp"

namespace corvane {

/// Runs tools with posix_spawn: standard input from /dev/null, both output streams drained
/// together so that neither pipe can fill and stall the tool.
class PosixProcessRunner final : public ProcessRunner {
public:
    ProcessResult run(const ProcessRequest& request) override;
};

} // namespace corvane
