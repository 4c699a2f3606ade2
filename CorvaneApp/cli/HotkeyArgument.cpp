#include "CorvaneApp/cli/HotkeyArgument.hpp"

#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneCore/support/Text.hpp"

#include <map>

namespace corvane {

namespace {

const std::map<std::string, std::uint64_t> kModifierNames = {
    {"ctrl", HotkeyModifiers::control}, {"control", HotkeyModifiers::control}, {"⌃", HotkeyModifiers::control},
    {"opt", HotkeyModifiers::option},   {"option", HotkeyModifiers::option},   {"alt", HotkeyModifiers::option},
    {"⌥", HotkeyModifiers::option},     {"cmd", HotkeyModifiers::command},     {"command", HotkeyModifiers::command},
    {"⌘", HotkeyModifiers::command},    {"shift", HotkeyModifiers::shift},     {"⇧", HotkeyModifiers::shift},
};

// Names people type for keys whose cap is a symbol or a word of its own.
const std::map<std::string, std::string> kKeyAliases = {
    {"enter", "Return"}, {"esc", "Escape"}, {"backspace", "Delete"}, {"left", "←"}, {"right", "→"},
    {"down", "↓"},       {"up", "↑"},       {"minus", "-"},          {"equal", "="}, {"equals", "="},
    {"comma", ","},      {"period", "."},   {"slash", "/"},          {"backslash", "\\"}, {"semicolon", ";"},
    {"quote", "'"},      {"plus", "="},
};

} // namespace

Hotkey parseHotkeyArgument(const std::string& spec) {
    auto parts = text::split(text::trimmed(spec), '+');
    // "ctrl++" means the key on which "+" is written.
    if (parts.size() >= 2 && parts.back().empty() && parts[parts.size() - 2].empty()) {
        parts.pop_back();
        parts.back() = "plus";
    }
    if (parts.size() < 2 || parts.back().empty())
        throw UsageError("hotkey \"" + spec + "\" needs modifiers and a key, like \"ctrl+opt+1\"");

    Hotkey hotkey;
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        auto name = text::lowercased(text::trimmed(parts[i]));
        auto it = kModifierNames.find(name);
        if (it == kModifierNames.end())
            throw UsageError("unknown modifier \"" + parts[i] + "\" in hotkey \"" + spec +
                             "\" (use ctrl, opt, cmd or shift)");
        hotkey.modifiers.rawValue |= it->second;
    }
    auto key = std::string(text::trimmed(parts.back()));
    auto lower = text::lowercased(key);
    if (auto alias = kKeyAliases.find(lower); alias != kKeyAliases.end()) key = alias->second;
    if (auto code = Hotkey::keyCodeForLabel(key)) {
        hotkey.keyCode = *code;
        return hotkey;
    }
    if (lower.starts_with("key") && lower.size() > 3 && lower.size() <= 8 &&
        lower.find_first_not_of("0123456789", 3) == std::string::npos) {
        auto code = std::stoul(lower.substr(3));
        if (code <= 0xFFFF) {
            hotkey.keyCode = static_cast<std::uint16_t>(code);
            return hotkey;
        }
    }
    throw UsageError("unknown key \"" + parts.back() + "\" in hotkey \"" + spec + "\"");
}

std::optional<HotkeyModifiers> parseModifiersArgument(const std::string& spec) {
    HotkeyModifiers modifiers;
    for (const auto& part : text::split(text::trimmed(spec), '+')) {
        auto it = kModifierNames.find(text::lowercased(text::trimmed(part)));
        if (it == kModifierNames.end()) return std::nullopt;
        modifiers.rawValue |= it->second;
    }
    return modifiers;
}

} // namespace corvane
