#pragma once

#include "CorvaneCore/platform/UserAlerts.hpp"

#include <functional>

namespace corvane {

/// User notifications and named system sounds. Only in an application bundle: user notifications
/// refuse a bare executable. Main thread.
///
/// Permission is asked on the first notification rather than at launch, so a user who never runs
/// a timer is never asked; notifications made while the question is open wait for the answer.
/// They show as banners even while Corvane is the front application.
class MacUserAlerts final : public UserAlerts {
  public:
    MacUserAlerts();

    /// What draws the user's eye: an application with no Dock icon has no attention request
    /// of the system's to make, so the menu-bar item takes it over. Shared by every instance.
    static void setAttentionHandler(std::function<void(Attention)> handler);

    void playSound(const std::string& name) override;
    void requestAttention(Attention attention) override;
    void scheduleNotification(const Notification& notification) override;
    void withdrawNotification(const std::string& identifier) override;
};

} // namespace corvane
