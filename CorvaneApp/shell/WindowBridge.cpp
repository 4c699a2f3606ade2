#include "CorvaneApp/shell/WindowBridge.hpp"

#include <nlohmann/json.hpp>

namespace corvane::WindowBridge {

namespace {

std::string quoted(std::string_view text) {
    // Invalid UTF-8 (a file name from an older file system) is replaced rather than thrown on.
    return nlohmann::json(std::string(text)).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace

std::string startAddress(std::string_view page) {
    std::string address = std::string(scheme) + "://" + std::string(host) + "/index.html";
    if (page.empty()) return address;
    // "widgets/ID": the page, and the one thing on it to open.
    auto slash = page.find('/');
    address += "#page=" + std::string(page.substr(0, slash));
    if (slash != std::string_view::npos) address += "&item=" + std::string(page.substr(slash + 1));
    return address;
}

std::string openPageScript(std::string_view page) {
    return "window.corvane?.openPage(" + quoted(page) + ");";
}

std::string droppedPathsScript(const std::vector<std::string>& paths) {
    return "window.corvane?.droppedPaths(" +
           nlohmann::json(paths).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + ");";
}

std::optional<std::string> systemSettingsAddress(std::string_view pane) {
    constexpr std::string_view privacy = "x-apple.systempreferences:com.apple.preference.security?";
    if (pane == "accessibility") return std::string(privacy) + "Privacy_Accessibility";
    if (pane == "focus") return std::string(privacy) + "Privacy_Focus";
    if (pane == "notifications") return std::string("x-apple.systempreferences:com.apple.preference.notifications");
    return std::nullopt;
}

Reply error(int status, std::string_view message) {
    return {status, nlohmann::json{{"error", std::string(message)}}.dump(-1, ' ', false,
                                                                          nlohmann::json::error_handler_t::replace)};
}

} // namespace corvane::WindowBridge
