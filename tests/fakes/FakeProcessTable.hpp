#pragma once

#include "CorvaneCore/platform/ProcessTable.hpp"

#include <map>

namespace corvane {

/// One process per name, set by the test.
class FakeProcessTable final : public ProcessTable {
public:
    std::optional<ProcessInfo> find(const std::string& name) const override {
        ++lookups;
        auto it = processes.find(name);
        if (it == processes.end()) return std::nullopt;
        return it->second;
    }
    void start(const std::string& name, int pid, Date startTime) { processes[name] = ProcessInfo{pid, name, startTime}; }
    void stop(const std::string& name) { processes.erase(name); }

    std::map<std::string, ProcessInfo> processes;
    mutable int lookups = 0;
};

} // namespace corvane
