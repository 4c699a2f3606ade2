#include "CorvaneCore/dock/PlistValue.hpp"

namespace corvane {

std::optional<std::int64_t> PlistValue::integer() const {
    if (auto value = std::get_if<std::int64_t>(&storage)) return *value;
    return std::nullopt;
}

std::optional<double> PlistValue::number() const {
    if (auto value = std::get_if<double>(&storage)) return *value;
    if (auto value = std::get_if<std::int64_t>(&storage)) return static_cast<double>(*value);
    return std::nullopt;
}

std::optional<bool> PlistValue::boolean() const {
    if (auto value = std::get_if<bool>(&storage)) return *value;
    return std::nullopt;
}

const PlistValue* valueAt(const PlistDictionary& dictionary, std::initializer_list<std::string_view> keys) {
    const PlistDictionary* current = &dictionary;
    const PlistValue* value = nullptr;
    for (auto key : keys) {
        if (!current) return nullptr;
        auto it = current->find(key);
        if (it == current->end()) return nullptr;
        value = &it->second;
        current = value->dictionary();
    }
    return value;
}

const std::string* stringAt(const PlistDictionary& dictionary, std::initializer_list<std::string_view> keys) {
    auto value = valueAt(dictionary, keys);
    return value ? value->string() : nullptr;
}

} // namespace corvane
