#pragma once

#include "CorvaneCore/platform/Notifier.hpp"

namespace corvane {

/// Off macOS there is no other process of the application to tell or to hear from: posts go
/// nowhere and observers are never called, not even for this process's own posts.
class NullNotifier final : public Notifier {
public:
    void post(const std::string&) override {}
    ObserverToken observe(const std::string&, Handler) override { return 0; }
    void removeObserver(ObserverToken) override {}
};

} // namespace corvane
