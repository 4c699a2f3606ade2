#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvane {

/// Any JSON value, held without interpretation so that data this build does not understand can
/// be written back as it was read. Numbers are carried as doubles.
struct JSONValue {
    using Array = std::vector<JSONValue>;
    using Object = std::map<std::string, JSONValue>;

    std::variant<std::nullptr_t, bool, double, std::string, Array, Object> value;

    JSONValue() : value(nullptr) {}
    JSONValue(std::nullptr_t) : value(nullptr) {}
    JSONValue(bool b) : value(b) {}
    JSONValue(double number) : value(number) {}
    JSONValue(int number) : value(static_cast<double>(number)) {}
    JSONValue(std::string text) : value(std::move(text)) {}
    JSONValue(const char* text) : value(std::string(text)) {}
    JSONValue(Array array) : value(std::move(array)) {}
    JSONValue(Object object) : value(std::move(object)) {}

    static JSONValue fromJson(const nlohmann::json& json);
    /// Numbers with an exact integer value come out as integers, so that "3" stays "3".
    nlohmann::json toJson() const;

    bool isNull() const { return std::holds_alternative<std::nullptr_t>(value); }
    const bool* boolean() const { return std::get_if<bool>(&value); }
    const double* number() const { return std::get_if<double>(&value); }
    const std::string* string() const { return std::get_if<std::string>(&value); }
    const Array* array() const { return std::get_if<Array>(&value); }
    const Object* object() const { return std::get_if<Object>(&value); }

    /// The member `key` of an object; none for a missing key or a value that is no object.
    const JSONValue* member(std::string_view key) const;
    /// The number's value when it is a whole number within the signed 64-bit range.
    std::optional<long long> exactInteger() const;

    bool operator==(const JSONValue&) const = default;
};

} // namespace corvane
