#include "CorvaneCore/support/JsonCoding.hpp"

#include <cmath>

namespace corvane {

namespace {
std::string typeName(const Json& value) {
    switch (value.type()) {
    case Json::value_t::null: return "null";
    case Json::value_t::boolean: return "a boolean";
    case Json::value_t::string: return "a string";
    case Json::value_t::array: return "an array";
    case Json::value_t::object: return "a dictionary";
    default: return "a number";
    }
}
} // namespace

std::string JsonReader::childPath(std::string_view key) const {
    return path_.empty() ? std::string(key) : path_ + "." + std::string(key);
}

std::string JsonReader::childPath(std::size_t index) const { return path_ + "[" + std::to_string(index) + "]"; }

void JsonReader::fail(DecodingError::Kind kind, std::string description) const {
    throw DecodingError(kind, path_, std::move(description));
}

void JsonReader::typeMismatch(std::string_view expected) const {
    fail(value_.is_null() ? DecodingError::Kind::valueNotFound : DecodingError::Kind::typeMismatch,
         "Expected to decode " + std::string(expected) + " but found " + typeName(value_) + " instead.");
}

bool JsonReader::has(std::string_view key) const {
    if (!value_.is_object()) return false;
    auto it = value_.find(key);
    return it != value_.end() && !it->is_null();
}

const JsonReader& JsonReader::object() const {
    if (!value_.is_object()) typeMismatch("Dictionary<String, Any>");
    return *this;
}

JsonReader JsonReader::operator[](std::string_view key) const {
    object();
    auto it = value_.find(key);
    if (it == value_.end() || it->is_null())
        fail(DecodingError::Kind::keyNotFound, "No value associated with key \"" + std::string(key) + "\".");
    return JsonReader(*it, childPath(key));
}

std::optional<JsonReader> JsonReader::optional(std::string_view key) const {
    object();
    auto it = value_.find(key);
    if (it == value_.end() || it->is_null()) return std::nullopt;
    return JsonReader(*it, childPath(key));
}

std::string JsonReader::string() const {
    if (!value_.is_string()) typeMismatch("String");
    return value_.get<std::string>();
}

bool JsonReader::boolean() const {
    if (!value_.is_boolean()) typeMismatch("Bool");
    return value_.get<bool>();
}

double JsonReader::number() const {
    if (!value_.is_number()) typeMismatch("Double");
    return value_.get<double>();
}

namespace {
// 2^63 and 2^64 are exact in a double, and every integral double below them converts exactly.
constexpr double twoToThe63 = 9223372036854775808.0;
constexpr double twoToThe64 = 18446744073709551616.0;
} // namespace

double JsonReader::integralDouble() const {
    double d = value_.get<double>();
    if (!std::isfinite(d) || std::trunc(d) != d)
        fail(DecodingError::Kind::dataCorrupted, "Parsed JSON number <" + value_.dump() + "> is not an integer.");
    return d;
}

void JsonReader::doesNotFit() const {
    fail(DecodingError::Kind::dataCorrupted, "Parsed JSON number <" + value_.dump() + "> does not fit.");
}

std::int64_t JsonReader::signedValue(std::int64_t min, std::int64_t max) const {
    if (!value_.is_number()) typeMismatch("Int");
    std::int64_t value;
    if (value_.is_number_unsigned()) {
        auto unsignedValue = value_.get<std::uint64_t>();
        if (unsignedValue > static_cast<std::uint64_t>(max)) doesNotFit();
        value = static_cast<std::int64_t>(unsignedValue);
    } else if (value_.is_number_integer()) {
        value = value_.get<std::int64_t>();
    } else {
        double d = integralDouble();
        if (d < -twoToThe63 || d >= twoToThe63) doesNotFit();
        value = static_cast<std::int64_t>(d);
    }
    if (value < min || value > max) doesNotFit();
    return value;
}

std::uint64_t JsonReader::unsignedValue(std::uint64_t max) const {
    if (!value_.is_number()) typeMismatch("UInt");
    std::uint64_t value;
    if (value_.is_number_unsigned()) {
        value = value_.get<std::uint64_t>();
    } else if (value_.is_number_integer()) {
        auto signedValue = value_.get<std::int64_t>();
        if (signedValue < 0) doesNotFit();
        value = static_cast<std::uint64_t>(signedValue);
    } else {
        double d = integralDouble();
        if (d < 0 || d >= twoToThe64) doesNotFit();
        value = static_cast<std::uint64_t>(d);
    }
    if (value > max) doesNotFit();
    return value;
}

Uuid JsonReader::uuid() const {
    auto text = string();
    if (auto uuid = Uuid::parse(text)) return *uuid;
    fail(DecodingError::Kind::dataCorrupted, "Attempted to decode UUID from invalid UUID string.");
}

Bytes JsonReader::data() const {
    auto text = string();
    if (auto bytes = base64Decode(text)) return *bytes;
    fail(DecodingError::Kind::dataCorrupted, "Encountered Data is not valid Base64.");
}

std::vector<JsonReader> JsonReader::array() const {
    if (!value_.is_array()) typeMismatch("Array<Any>");
    std::vector<JsonReader> elements;
    elements.reserve(value_.size());
    for (std::size_t i = 0; i < value_.size(); ++i) elements.emplace_back(value_[i], childPath(i));
    return elements;
}

Json parseJson(std::string_view text) {
    try {
        return Json::parse(text.begin(), text.end());
    } catch (const Json::exception& error) {
        // Not only syntax: a number too large for a double ("1e400") is an out_of_range error.
        // nlohmann's text starts with "[json.exception.parse_error.101] parse error at line 1, ...".
        std::string detail = error.what();
        if (auto at = detail.find("] "); at != std::string::npos) detail = detail.substr(at + 2);
        throw DecodingError(DecodingError::Kind::dataCorrupted, "",
                            "The given data was not valid JSON (" + detail + ").");
    }
}

std::string prettyJson(const Json& value) {
    // nlohmann keeps object keys in a std::map, so every level comes out sorted.
    return value.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace corvane
