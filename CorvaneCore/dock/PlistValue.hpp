#pragma once

#include "CorvaneCore/support/Base64.hpp"
#include "CorvaneCore/support/Date.hpp"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvane {

/// A keyed-archiver reference; kept only so that such values survive a round trip.
struct PlistUid {
    std::uint64_t value = 0;
    bool operator==(const PlistUid&) const = default;
};

class PlistValue;
using PlistArray = std::vector<PlistValue>;
using PlistDictionary = std::map<std::string, PlistValue, std::less<>>;

/// One property-list value: what the Dock keeps in its preferences. The Dock's tiles carry keys
/// we never interpret; holding every value type lets them pass through unchanged.
class PlistValue {
public:
    using Storage = std::variant<PlistDictionary, PlistArray, std::string, std::int64_t, double, bool, Date, Bytes,
                                 PlistUid>;

    /// An empty dictionary.
    PlistValue() = default;
    PlistValue(PlistDictionary value) : storage(std::move(value)) {}
    PlistValue(PlistArray value) : storage(std::move(value)) {}
    PlistValue(std::string value) : storage(std::move(value)) {}
    PlistValue(std::string_view value) : storage(std::string(value)) {}
    // Without it a string literal would become a boolean.
    PlistValue(const char* value) : storage(std::string(value)) {}
    PlistValue(std::int64_t value) : storage(value) {}
    PlistValue(int value) : storage(std::int64_t{value}) {}
    PlistValue(double value) : storage(value) {}
    PlistValue(bool value) : storage(value) {}
    PlistValue(Date value) : storage(value) {}
    PlistValue(Bytes value) : storage(std::move(value)) {}
    PlistValue(PlistUid value) : storage(value) {}

    const PlistDictionary* dictionary() const { return std::get_if<PlistDictionary>(&storage); }
    PlistDictionary* dictionary() { return std::get_if<PlistDictionary>(&storage); }
    const PlistArray* array() const { return std::get_if<PlistArray>(&storage); }
    const std::string* string() const { return std::get_if<std::string>(&storage); }
    std::optional<std::int64_t> integer() const;
    /// A real, or an integer taken as a real: the Dock writes numbers either way.
    std::optional<double> number() const;
    std::optional<bool> boolean() const;

    bool operator==(const PlistValue&) const = default;

    Storage storage;
};

/// The value reached by following `keys` through nested dictionaries; none when a step is
/// missing or not a dictionary.
const PlistValue* valueAt(const PlistDictionary& dictionary, std::initializer_list<std::string_view> keys);
/// As `valueAt`, when the value is text.
const std::string* stringAt(const PlistDictionary& dictionary, std::initializer_list<std::string_view> keys);

} // namespace corvane
