#pragma once

#include "CorvaneCore/widgets/clipboard/ClipboardItem.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What keeps the history from being stored. The history itself stays in memory.
struct ClipboardTrouble {
    enum class Kind { persistenceFailed, keychainFailed };

    Kind kind = Kind::persistenceFailed;
    /// The failure's own description.
    std::string message;

    static ClipboardTrouble persistenceFailed(std::string message) { return {Kind::persistenceFailed, std::move(message)}; }
    static ClipboardTrouble keychainFailed(std::string message) { return {Kind::keychainFailed, std::move(message)}; }

    bool isKeychain() const { return kind == Kind::keychainFailed; }
    /// The tile's title for the trouble.
    std::string_view title() const {
        return isKeychain() ? "Cannot reach the Keychain" : "Cannot save the clipboard";
    }

    bool operator==(const ClipboardTrouble&) const = default;
};

/// The history as the source last left it.
struct ClipboardState {
    /// Display order: pinned first, then newest first.
    std::vector<ClipboardItem> items;
    /// Items captured since the panel was last opened.
    int unseenCount = 0;
    std::optional<ClipboardTrouble> trouble;
    /// The stored history has been read (or found absent) at least once.
    bool hasRead = false;

    bool operator==(const ClipboardState&) const = default;
};

} // namespace corvane
