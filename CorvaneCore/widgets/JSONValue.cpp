#include "CorvaneCore/widgets/JSONValue.hpp"

#include <nlohmann/json.hpp>

#include <cmath>

namespace corvane {

JSONValue JSONValue::fromJson(const nlohmann::json& json) {
    switch (json.type()) {
    case nlohmann::json::value_t::boolean:
        return json.get<bool>();
    case nlohmann::json::value_t::number_integer:
    case nlohmann::json::value_t::number_unsigned:
    case nlohmann::json::value_t::number_float:
        return json.get<double>();
    case nlohmann::json::value_t::string:
        return json.get<std::string>();
    case nlohmann::json::value_t::array: {
        Array array;
        array.reserve(json.size());
        for (const auto& element : json)
            array.push_back(fromJson(element));
        return array;
    }
    case nlohmann::json::value_t::object: {
        Object object;
        for (const auto& [key, member] : json.items())
            object.emplace(key, fromJson(member));
        return object;
    }
    default:
        return nullptr;
    }
}

nlohmann::json JSONValue::toJson() const {
    if (auto b = boolean()) return *b;
    if (auto n = number()) {
        // -0 would lose its sign as an integer.
        if (auto whole = exactInteger(); whole && !(*n == 0 && std::signbit(*n))) return *whole;
        return *n;
    }
    if (auto s = string()) return *s;
    if (auto a = array()) {
        auto json = nlohmann::json::array();
        for (const auto& element : *a)
            json.push_back(element.toJson());
        return json;
    }
    if (auto o = object()) {
        auto json = nlohmann::json::object();
        for (const auto& [key, member] : *o)
            json[key] = member.toJson();
        return json;
    }
    return nullptr;
}

const JSONValue* JSONValue::member(std::string_view key) const {
    auto o = object();
    if (!o) return nullptr;
    auto it = o->find(std::string(key));
    return it == o->end() ? nullptr : &it->second;
}

std::optional<long long> JSONValue::exactInteger() const {
    auto n = number();
    // 2^63 is exactly representable, and is the first double above the range.
    if (!n || !std::isfinite(*n) || std::trunc(*n) != *n || *n < -9223372036854775808.0 ||
        *n >= 9223372036854775808.0)
        return std::nullopt;
    return static_cast<long long>(*n);
}

} // namespace corvane
