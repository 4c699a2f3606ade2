#pragma once

#include "CorvaneCore/platform/ProcessTable.hpp"

namespace corvane {

/// The process table as Linux shows it under /proc.
class ProcProcessTable final : public ProcessTable {
public:
    std::optional<ProcessInfo> find(const std::string& name) const override;
};

} // namespace corvane
