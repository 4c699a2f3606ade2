#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What the application's window says to its pages and how it reads what they ask, kept apart from
/// WebKit so that it is the same text on every system. Every value that reaches a script is JSON,
/// so a path or a name can never become code.
namespace WindowBridge {

/// The scheme the window's pages load from ("corvane://app/index.html"): no network port is opened.
inline constexpr std::string_view scheme = "corvane";
inline constexpr std::string_view host = "app";
/// Calls whose words start with this are answered by the application itself (panels, System
/// Settings), not by the command vocabulary.
inline constexpr std::string_view nativePrefix = "native/";

/// The address that opens the pages on `page` when nothing is loaded yet. A page may name one
/// thing on it to open: "widgets/ID" is that widget's settings.
std::string startAddress(std::string_view page);
/// Asks a loaded page to show `page`.
std::string openPageScript(std::string_view page);
/// Hands the page the paths of files dropped on the window.
std::string droppedPathsScript(const std::vector<std::string>& paths);

/// The System Settings address of a permission's pane: "accessibility", "focus" or
/// "notifications"; none for another name.
std::optional<std::string> systemSettingsAddress(std::string_view pane);

/// The reply of a call, as the page's promise receives it: {status, body} with the body as JSON text.
struct Reply {
    int status = 200;
    std::string body;
};
Reply error(int status, std::string_view message);

} // namespace WindowBridge

} // namespace corvane
