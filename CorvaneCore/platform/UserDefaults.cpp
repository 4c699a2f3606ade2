#include "CorvaneCore/platform/UserDefaults.hpp"

#include <cmath>

namespace corvane {

std::optional<bool> UserDefaults::boolValue(const std::string& key) const {
    auto stored = value(key);
    if (!stored) return std::nullopt;
    if (auto flag = std::get_if<bool>(&*stored)) return *flag;
    return std::nullopt;
}

std::optional<std::int64_t> UserDefaults::intValue(const std::string& key) const {
    auto stored = value(key);
    if (!stored) return std::nullopt;
    if (auto integer = std::get_if<std::int64_t>(&*stored)) return *integer;
    if (auto real = std::get_if<double>(&*stored); real && std::isfinite(*real) && std::abs(*real) < 9.2e18)
        return static_cast<std::int64_t>(*real);
    return std::nullopt;
}

std::optional<double> UserDefaults::doubleValue(const std::string& key) const {
    auto stored = value(key);
    if (!stored) return std::nullopt;
    if (auto real = std::get_if<double>(&*stored)) return *real;
    if (auto integer = std::get_if<std::int64_t>(&*stored)) return static_cast<double>(*integer);
    return std::nullopt;
}

std::optional<std::string> UserDefaults::stringValue(const std::string& key) const {
    auto stored = value(key);
    if (!stored) return std::nullopt;
    if (auto text = std::get_if<std::string>(&*stored)) return *text;
    return std::nullopt;
}

std::optional<Bytes> UserDefaults::dataValue(const std::string& key) const {
    auto stored = value(key);
    if (!stored) return std::nullopt;
    if (auto data = std::get_if<Bytes>(&*stored)) return *data;
    return std::nullopt;
}

} // namespace corvane
