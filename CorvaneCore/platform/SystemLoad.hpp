#pragma once

#include <optional>

namespace corvane {

/// How busy the machine is, for widgets that show it. Main thread.
class SystemLoad {
  public:
    virtual ~SystemLoad() = default;
    /// The share of processor time spent busy since the previous call, 0…1; none on the first
    /// call or when the system does not say.
    virtual std::optional<double> cpu() = 0;
    /// The share of physical memory in use, 0…1; none when the system does not say.
    virtual std::optional<double> memory() = 0;
    /// Whether the system reports serious thermal pressure.
    virtual bool isHot() = 0;
};

} // namespace corvane
