#pragma once

#include "CorvaneCore/platform/UserAlerts.hpp"

#include <map>
#include <string>
#include <vector>

namespace corvane {

class RecordingUserAlerts final : public UserAlerts {
public:
    void playSound(const std::string& name) override { sounds.push_back(name); }
    void requestAttention(Attention attention) override { attentionRequests.push_back(attention); }
    void scheduleNotification(const Notification& notification) override {
        pending[notification.identifier] = notification;
        ++scheduledCount;
    }
    void withdrawNotification(const std::string& identifier) override { pending.erase(identifier); }

    const Notification* pendingNotification(const std::string& identifier) const {
        auto it = pending.find(identifier);
        return it == pending.end() ? nullptr : &it->second;
    }

    std::vector<std::string> sounds;
    std::vector<Attention> attentionRequests;
    std::map<std::string, Notification> pending;
    int scheduledCount = 0;
};

} // namespace corvane
