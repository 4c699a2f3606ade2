#pragma once

#include "CorvaneApp/cli/ToolContext.hpp"

#include <memory>

namespace corvane {

/// The real services of this system, made in one place: for the command-line tool, and for the
/// application, whose window runs the same commands.
class SystemToolServices {
public:
    SystemToolServices();
    ~SystemToolServices();
    SystemToolServices(const SystemToolServices&) = delete;
    SystemToolServices& operator=(const SystemToolServices&) = delete;

    ToolServices& services();

private:
    struct Adapters;
    std::unique_ptr<Adapters> adapters_;
};

} // namespace corvane
