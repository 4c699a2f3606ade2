#pragma once

#include <string>

namespace corvane {

/// What the user hears and sees when something of theirs ends: notifications, system sounds and
/// the Dock's attention request. Main thread.
class UserAlerts {
public:
    enum class Attention { critical, informational };

    /// A one-shot notification, delivered with the default notification sound.
    struct Notification {
        std::string identifier;
        std::string title;
        std::string body;
        /// Seconds from now until delivery.
        double delay = 1;

        bool operator==(const Notification&) const = default;
    };

    virtual ~UserAlerts() = default;
    /// A system sound by name ("Glass"); an unknown name plays nothing.
    virtual void playSound(const std::string& name) = 0;
    virtual void requestAttention(Attention attention) = 0;
    /// Replaces any pending notification with the same identifier.
    virtual void scheduleNotification(const Notification& notification) = 0;
    /// Withdraws the pending notification; an unknown identifier does nothing.
    virtual void withdrawNotification(const std::string& identifier) = 0;
};

} // namespace corvane
