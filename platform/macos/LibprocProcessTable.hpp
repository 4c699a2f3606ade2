#pragma once

#include "CorvaneCore/platform/ProcessTable.hpp"

namespace corvane {

/// The process table through libproc. Written without a macOS compiler at hand: keep it thin.
class LibprocProcessTable final : public ProcessTable {
public:
    std::optional<ProcessInfo> find(const std::string& name) const override;
};

} // namespace corvane
