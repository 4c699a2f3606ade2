#pragma once

#include "CorvaneCore/platform/Notifier.hpp"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

/// Records posts; `deliver` plays a notification arriving from any process, this one's own
/// echoes included, which the real centre delivers later and never inside `post`.
class RecordingNotifier final : public Notifier {
public:
    void post(const std::string& name) override { posted.push_back(name); }
    ObserverToken observe(const std::string& name, Handler handler) override {
        observers_.emplace(++last_, std::pair{name, std::move(handler)});
        return last_;
    }
    void removeObserver(ObserverToken token) override { observers_.erase(token); }

    /// Calls every observer of `name` present now, in the order they were added.
    void deliver(const std::string& name, const std::optional<std::string>& object = std::nullopt) {
        std::vector<ObserverToken> due;
        for (const auto& [token, observer] : observers_)
            if (observer.first == name) due.push_back(token);
        for (auto token : due)
            if (auto it = observers_.find(token); it != observers_.end()) {
                auto handler = it->second.second; // an observer may remove itself
                handler(object);
            }
    }
    std::size_t observerCount() const { return observers_.size(); }

    std::vector<std::string> posted;

private:
    ObserverToken last_ = 0;
    std::map<ObserverToken, std::pair<std::string, Handler>> observers_;
};

} // namespace corvane
