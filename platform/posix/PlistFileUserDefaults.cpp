#include "platform/posix/PlistFileUserDefaults.hpp"

#include "platform/posix/PlistFile.hpp"

namespace corvane {

namespace {

std::optional<UserDefaults::Value> fromPlist(const PlistValue& stored) {
    return std::visit(
        [](const auto& value) -> std::optional<UserDefaults::Value> {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, std::int64_t> || std::is_same_v<T, double> ||
                          std::is_same_v<T, std::string> || std::is_same_v<T, Bytes>)
                return UserDefaults::Value(value);
            else
                return std::nullopt;
        },
        stored.storage);
}

PlistValue toPlist(const UserDefaults::Value& value) {
    return std::visit([](const auto& v) { return PlistValue(v); }, value);
}

PlistDictionary readOrEmpty(const std::filesystem::path& url) {
    try {
        return readPlistDictionary(url).value_or(PlistDictionary{});
    } catch (const PlistFileError&) {
        return {};
    }
}

PlistDictionary readForChange(const std::filesystem::path& url) {
    try {
        return readPlistDictionary(url).value_or(PlistDictionary{});
    } catch (const PlistFileError& error) {
        throw std::runtime_error("cannot read " + url.string() + ": " + error.what());
    }
}

void writeForChange(const std::filesystem::path& url, const PlistDictionary& root) {
    try {
        writePlistDictionary(url, root);
    } catch (const PlistFileError& error) {
        throw std::runtime_error("cannot write " + url.string() + ": " + error.what());
    }
}

} // namespace

std::optional<UserDefaults::Value> PlistFileUserDefaults::value(const std::string& key) const {
    std::lock_guard lock(mutex_);
    auto root = readOrEmpty(url_);
    auto it = root.find(key);
    if (it == root.end()) return std::nullopt;
    return fromPlist(it->second);
}

void PlistFileUserDefaults::set(const std::string& key, const Value& value) {
    std::lock_guard lock(mutex_);
    auto root = readForChange(url_);
    root.insert_or_assign(key, toPlist(value));
    writeForChange(url_, root);
}

void PlistFileUserDefaults::remove(const std::string& key) {
    std::lock_guard lock(mutex_);
    auto root = readForChange(url_);
    if (root.erase(key) == 0) return;
    writeForChange(url_, root);
}

std::vector<std::string> PlistFileUserDefaults::keys() const {
    std::lock_guard lock(mutex_);
    std::vector<std::string> result;
    for (const auto& entry : readOrEmpty(url_)) result.push_back(entry.first);
    return result;
}

} // namespace corvane
