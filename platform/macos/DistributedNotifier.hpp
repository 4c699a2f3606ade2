#pragma once

#include "CorvaneCore/platform/Notifier.hpp"

namespace corvane {

/// Posts through the distributed notification center.
class DistributedNotifier final : public Notifier {
public:
    void post(const std::string& name) override;
};

} // namespace corvane
