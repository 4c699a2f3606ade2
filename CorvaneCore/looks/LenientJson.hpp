#pragma once

// Readers for settings records, where one unreadable value must not cost the user every other
// choice: a key that is missing, null or of the wrong type reads as none, and the caller keeps
// its default. Include from .cpp files only.

#include <nlohmann/json.hpp>

#include <exception>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::lenient {

/// A whole document; text that is not JSON at all (an HTML error page, a cut-off body, a number
/// past what a double holds) reads as none.
inline std::optional<nlohmann::json> document(std::string_view text) {
    try {
        auto value = nlohmann::json::parse(text.begin(), text.end(), nullptr, false);
        if (value.is_discarded()) return std::nullopt;
        return value;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

inline const nlohmann::json* value(const nlohmann::json& object, std::string_view key) {
    if (!object.is_object()) return nullptr;
    auto it = object.find(key);
    return it == object.end() ? nullptr : &*it;
}

inline std::optional<double> number(const nlohmann::json& object, std::string_view key) {
    auto found = value(object, key);
    if (!found || !found->is_number()) return std::nullopt;
    return found->get<double>();
}

inline std::optional<bool> boolean(const nlohmann::json& object, std::string_view key) {
    auto found = value(object, key);
    if (!found || !found->is_boolean()) return std::nullopt;
    return found->get<bool>();
}

inline std::optional<std::string> string(const nlohmann::json& object, std::string_view key) {
    auto found = value(object, key);
    if (!found || !found->is_string()) return std::nullopt;
    return found->get<std::string>();
}

/// A text raw value through `fromRaw`; unknown text is none, so files from newer versions load.
template <typename FromRaw>
auto rawValue(const nlohmann::json& object, std::string_view key, FromRaw fromRaw)
    -> decltype(fromRaw(std::string_view{})) {
    auto text = string(object, key);
    if (!text) return std::nullopt;
    return fromRaw(*text);
}

template <typename T> void putIfSet(nlohmann::json& object, const char* key, const std::optional<T>& value) {
    if (value) object[key] = *value;
}

} // namespace corvane::lenient
