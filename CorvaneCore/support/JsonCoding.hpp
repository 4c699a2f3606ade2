#pragma once

// The one set of JSON read and write helpers every record's coding uses. Include it from .cpp
// files only: it brings in the whole of nlohmann/json.

#include "CorvaneCore/support/Base64.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/support/Uuid.hpp"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

using Json = nlohmann::json;

/// A JSON value together with where it sits in its document, so that every failure names its
/// key path. Readers fail with `DecodingError`.
class JsonReader {
public:
    JsonReader(const Json& value, std::string path = {}) : value_(value), path_(std::move(path)) {}

    const Json& json() const { return value_; }
    const std::string& path() const { return path_; }

    bool has(std::string_view key) const;
    /// The value under `key`; a missing key (or one holding null) is `keyNotFound`.
    JsonReader operator[](std::string_view key) const;
    /// The value under `key`, none when the key is missing or holds null.
    std::optional<JsonReader> optional(std::string_view key) const;

    std::string string() const;
    bool boolean() const;
    double number() const;
    template <typename Int> Int integer() const {
        if constexpr (std::numeric_limits<Int>::is_signed)
            return static_cast<Int>(signedValue(std::numeric_limits<Int>::min(), std::numeric_limits<Int>::max()));
        else
            return static_cast<Int>(unsignedValue(std::numeric_limits<Int>::max()));
    }
    Uuid uuid() const;
    Bytes data() const;
    std::vector<JsonReader> array() const;
    /// Checks that the value is an object and returns its reader.
    const JsonReader& object() const;

    /// Decodes a text raw value through `fromRaw`; an unknown value is `dataCorrupted`.
    template <typename Enum, typename FromRaw>
    Enum rawValue(FromRaw fromRaw, std::string_view typeName) const {
        auto text = string();
        if (auto value = fromRaw(text)) return *value;
        fail(DecodingError::Kind::dataCorrupted,
             "Cannot initialize " + std::string(typeName) + " from invalid String value " + text);
    }

    [[noreturn]] void fail(DecodingError::Kind kind, std::string description) const;
    [[noreturn]] void typeMismatch(std::string_view expected) const;

    std::string childPath(std::string_view key) const;
    std::string childPath(std::size_t index) const;

private:
    // Range checks in integers: a long double is only a double on arm64, too narrow for 64 bits.
    std::int64_t signedValue(std::int64_t min, std::int64_t max) const;
    std::uint64_t unsignedValue(std::uint64_t max) const;
    /// An integral double as it stands; anything else is `dataCorrupted`.
    double integralDouble() const;
    [[noreturn]] void doesNotFit() const;

    const Json& value_;
    std::string path_;
};

/// Parses a whole document; malformed text is `dataCorrupted` at the top.
Json parseJson(std::string_view text);
/// Pretty-printed (two spaces), keys sorted at every level, ending with a line break.
std::string prettyJson(const Json& value);

} // namespace corvane
