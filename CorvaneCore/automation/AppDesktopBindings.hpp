#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>

namespace corvane {

/// Where the system puts an application's windows: one desktop, or every desktop.
struct AppDesktopAssignment {
    struct Desktop {
        std::string uuid;
        bool operator==(const Desktop&) const = default;
    };
    struct AllDesktops {
        bool operator==(const AllDesktops&) const = default;
    };
    std::variant<Desktop, AllDesktops> value;
    bool operator==(const AppDesktopAssignment&) const = default;
};

/// The system's own per-application desktop assignments ("app-bindings" of "com.apple.spaces").
/// Bundle identifiers are compared in lower case.
struct AppDesktopBindings {
    static constexpr const char* domain = "com.apple.spaces";
    static constexpr const char* key = "app-bindings";
    static constexpr const char* allSpaces = "AllSpaces";

    std::map<std::string, std::string> values;

    std::optional<AppDesktopAssignment> assignment(const std::string& bundleIdentifier) const;
    /// A copy without any entry for the app and, when `assignment` is given, with it.
    AppDesktopBindings setting(const std::optional<AppDesktopAssignment>& assignment,
                               const std::string& bundleIdentifier) const;

    bool operator==(const AppDesktopBindings&) const = default;
};

} // namespace corvane
