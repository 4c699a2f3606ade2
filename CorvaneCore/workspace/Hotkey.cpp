#include "CorvaneCore/workspace/Hotkey.hpp"

#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <array>
#include <string_view>
#include <utility>

namespace corvane {

namespace {
constexpr std::array<std::pair<std::uint16_t, std::string_view>, 55> kKeyLabels = {{
    {0, "A"},   {1, "S"},      {2, "D"},       {3, "F"},      {4, "H"},       {5, "G"},     {6, "Z"},
    {7, "X"},   {8, "C"},      {9, "V"},       {11, "B"},     {12, "Q"},      {13, "W"},    {14, "E"},
    {15, "R"},  {16, "Y"},     {17, "T"},      {18, "1"},     {19, "2"},      {20, "3"},    {21, "4"},
    {22, "6"},  {23, "5"},     {24, "="},      {25, "9"},     {26, "7"},      {27, "-"},    {28, "8"},
    {29, "0"},  {30, "]"},     {31, "O"},      {32, "U"},     {33, "["},      {34, "I"},    {35, "P"},
    {36, "Return"}, {37, "L"}, {38, "J"},      {39, "'"},     {40, "K"},      {41, ";"},    {42, "\\"},
    {43, ","},  {44, "/"},     {45, "N"},      {46, "M"},     {47, "."},      {48, "Tab"},  {49, "Space"},
    {51, "Delete"}, {53, "Escape"}, {123, "←"}, {124, "→"},   {125, "↓"},     {126, "↑"},
}};
} // namespace

std::string HotkeyModifiers::displaySymbols() const {
    std::string symbols;
    if (contains(control)) symbols += "⌃";
    if (contains(option)) symbols += "⌥";
    if (contains(shift)) symbols += "⇧";
    if (contains(command)) symbols += "⌘";
    return symbols;
}

std::string Hotkey::label(std::uint16_t code) {
    for (auto [keyCode, label] : kKeyLabels)
        if (keyCode == code) return std::string(label);
    return "Key" + std::to_string(code);
}

std::optional<std::uint16_t> Hotkey::keyCodeForLabel(const std::string& label) {
    for (auto [code, cap] : kKeyLabels)
        if (text::equalsIgnoringCase(cap, label)) return code;
    return std::nullopt;
}

const Profile* Hotkey::conflictingProfile(const std::vector<Profile>& profiles, const Uuid& excluding) const {
    for (const auto& profile : profiles)
        if (profile.id != excluding && profile.hotkey && *profile.hotkey == *this) return &profile;
    return nullptr;
}

} // namespace corvane
