#pragma once

#include "CorvaneWidgetsUI/live/MachineSources.hpp"

#include <memory>

namespace corvane {

/// This system's adapters for the machine's readings (processor, battery, network, music,
/// calendars) and desktop actions, made in one place for the tool and the application.
class SystemMachine {
public:
    SystemMachine();
    ~SystemMachine();
    SystemMachine(const SystemMachine&) = delete;
    SystemMachine& operator=(const SystemMachine&) = delete;

    MachineSources sources() const;

private:
    struct Adapters;
    std::unique_ptr<Adapters> adapters_;
};

} // namespace corvane
