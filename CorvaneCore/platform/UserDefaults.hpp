#pragma once

#include "CorvaneCore/support/Base64.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace corvane {

/// The application's small settings store: typed values under text keys ("user defaults" on
/// macOS). Any thread; each call is atomic on its own.
class UserDefaults {
public:
    using Value = std::variant<bool, std::int64_t, double, std::string, Bytes>;

    virtual ~UserDefaults() = default;
    /// None when the key is absent or the store cannot be read.
    virtual std::optional<Value> value(const std::string& key) const = 0;
    /// Throws `std::runtime_error` when the store cannot be written.
    virtual void set(const std::string& key, const Value& value) = 0;
    /// Removing an absent key does nothing. Throws as `set`.
    virtual void remove(const std::string& key) = 0;
    /// Every key held, sorted.
    virtual std::vector<std::string> keys() const = 0;
    /// Takes in what other processes wrote since this one last read, where the store keeps a
    /// copy of its own.
    virtual void synchronize() {}

    // Typed access. A value of another type reads as none, except that numbers convert
    // between integer and real the way the platform's store does.
    std::optional<bool> boolValue(const std::string& key) const;
    std::optional<std::int64_t> intValue(const std::string& key) const;
    std::optional<double> doubleValue(const std::string& key) const;
    std::optional<std::string> stringValue(const std::string& key) const;
    std::optional<Bytes> dataValue(const std::string& key) const;

    void setBool(const std::string& key, bool value) { set(key, Value(value)); }
    void setInt(const std::string& key, std::int64_t value) { set(key, Value(value)); }
    void setDouble(const std::string& key, double value) { set(key, Value(value)); }
    void setString(const std::string& key, std::string value) { set(key, Value(std::move(value))); }
    void setData(const std::string& key, Bytes value) { set(key, Value(std::move(value))); }
};

} // namespace corvane
