#pragma once

#include <optional>
#include <string>

namespace corvane {

/// What a click on a widget asks of the desktop: open a file, folder, link or application,
/// show a file in its folder, run a Shortcut, open AirDrop, lock the keyboard. Each answers
/// whether the system took the request. Main thread.
class DesktopActions {
  public:
    virtual ~DesktopActions() = default;
    /// Opens a path or a URL, with the application of `bundleIdentifier` when given.
    virtual bool open(const std::string& pathOrURL, const std::optional<std::string>& bundleIdentifier) = 0;
    /// Shows the file selected in its folder.
    virtual bool reveal(const std::string& path) = 0;
    /// Runs the Shortcuts shortcut of that name.
    virtual bool runShortcut(const std::string& name) = 0;
    /// Opens the AirDrop window.
    virtual bool openAirDrop() = 0;
    /// Stops keyboard (and with `includesPointer`, pointer) input until `unlockKeyboard` or the
    /// unlock keys are held; false without the accessibility permission.
    virtual bool lockKeyboard(bool includesPointer) = 0;
    virtual void unlockKeyboard() = 0;
};

} // namespace corvane
