#include "CorvaneApp/preferences/InterfaceLanguage.hpp"

#include <algorithm>

namespace corvane::InterfaceLanguage {

namespace {

bool letters(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

} // namespace

std::optional<std::string> fromTag(std::string_view tag) {
    // Older systems wrote locale identifiers with underscores; both forms name the same language.
    auto next = [&tag]() {
        auto end = tag.find_first_of("-_");
        auto part = tag.substr(0, end);
        tag = end == std::string_view::npos ? std::string_view{} : tag.substr(end + 1);
        return part;
    };
    auto language = next();
    if (language.size() < 2 || language.size() > 3 || !letters(language)) return std::nullopt;
    std::string result;
    std::transform(language.begin(), language.end(), std::back_inserter(result), lower);
    // The region is dropped, but a script picks another writing ("zh-Hans" and "zh-Hant").
    if (auto script = next(); script.size() == 4 && letters(script)) {
        result += '-';
        result += upper(script[0]);
        std::transform(script.begin() + 1, script.end(), std::back_inserter(result), lower);
    }
    return result;
}

std::optional<std::string> fromPreferredLanguages(const std::vector<std::string>& languages) {
    if (languages.empty()) return std::nullopt;
    return fromTag(languages.front());
}

std::vector<std::string> preferredLanguages(const std::optional<std::string>& language) {
    if (!language) return {};
    return {*language};
}

} // namespace corvane::InterfaceLanguage
