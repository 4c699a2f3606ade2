#pragma once

#include <memory>
#include <string>

namespace corvane {

class CommandApi;

/// Corvane's one window: the settings pages, the workspace editor and the widget gallery, drawn
/// by the pages compiled into the program in a web view. The pages load from corvane://app/ and
/// reach the command vocabulary through a script message handler; no network port is opened and
/// no web address loads inside it. Main thread.
class SettingsWindow {
public:
    /// `api` answers the pages' calls, from a background queue, and must outlive the window.
    explicit SettingsWindow(CommandApi& api);
    ~SettingsWindow();
    SettingsWindow(const SettingsWindow&) = delete;
    SettingsWindow& operator=(const SettingsWindow&) = delete;

    /// Brings the window in front on `page` ("general", "workspaces", "widgets", ...).
    void open(const std::string& page);

private:
    struct Views;
    std::unique_ptr<Views> views_;
};

} // namespace corvane
