#pragma once

#include "CorvaneCore/platform/Notifier.hpp"

#include <map>
#include <memory>

namespace corvane {

/// Posts through and listens to the distributed notification center. Written without a macOS
/// compiler at hand: keep it thin.
class DistributedNotifier final : public Notifier {
public:
    DistributedNotifier() = default;
    /// Removes every observer still registered.
    ~DistributedNotifier() override;
    DistributedNotifier(const DistributedNotifier&) = delete;
    DistributedNotifier& operator=(const DistributedNotifier&) = delete;

    void post(const std::string& name) override;
    ObserverToken observe(const std::string& name, Handler handler) override;
    void removeObserver(ObserverToken token) override;

private:
    /// The handler's address is the observer the center knows; it stays put while registered.
    std::map<ObserverToken, std::unique_ptr<Handler>> observers_;
    ObserverToken last_ = 0;
};

} // namespace corvane
