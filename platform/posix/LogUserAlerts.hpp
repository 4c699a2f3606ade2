#pragma once

#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/UserAlerts.hpp"

namespace corvane {

/// Alerts where there is no one to show them to: each becomes a line in the log, category
/// "alerts". Main thread.
class LogUserAlerts final : public UserAlerts {
  public:
    explicit LogUserAlerts(Log& log) : log_(log) {}

    void playSound(const std::string& name) override;
    void requestAttention(Attention attention) override;
    void scheduleNotification(const Notification& notification) override;
    void withdrawNotification(const std::string& identifier) override;

  private:
    Log& log_;
};

} // namespace corvane
