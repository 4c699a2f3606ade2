#pragma once

#include "CorvaneCore/platform/UserAlerts.hpp"

namespace corvane {

/// User notifications, named system sounds and the Dock's attention request. Only in an
/// application bundle: user notifications refuse a bare executable. Main thread.
class MacUserAlerts final : public UserAlerts {
  public:
    void playSound(const std::string& name) override;
    void requestAttention(Attention attention) override;
    void scheduleNotification(const Notification& notification) override;
    void withdrawNotification(const std::string& identifier) override;

  private:
    bool askedForPermission_ = false;
};

} // namespace corvane
