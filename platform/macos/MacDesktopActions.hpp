#pragma once

#include "CorvaneCore/platform/DesktopActions.hpp"

#include <memory>

namespace corvane {

/// The desktop's side of widget clicks: the workspace opens and reveals, the `shortcuts` tool
/// runs Shortcuts, the Finder's AirDrop window opens, and an event tap holds back keyboard (and
/// pointer) input while the keyboard is locked. The lock needs the accessibility permission and
/// lifts when Control, Option and Command are held together for three seconds.
class MacDesktopActions final : public DesktopActions {
  public:
    MacDesktopActions();
    ~MacDesktopActions() override;
    MacDesktopActions(const MacDesktopActions&) = delete;
    MacDesktopActions& operator=(const MacDesktopActions&) = delete;

    bool open(const std::string& pathOrURL, const std::optional<std::string>& bundleIdentifier) override;
    bool reveal(const std::string& path) override;
    bool runShortcut(const std::string& name) override;
    bool openAirDrop() override;
    bool lockKeyboard(bool includesPointer) override;
    void unlockKeyboard() override;

  private:
    struct Lock;
    std::unique_ptr<Lock> lock_;
};

} // namespace corvane
