#pragma once

#include "CorvaneCore/platform/Notifier.hpp"

namespace corvane {

/// Off macOS there is no other process of the application to tell.
class NullNotifier final : public Notifier {
public:
    void post(const std::string&) override {}
};

} // namespace corvane
