#pragma once

#include "CorvaneCore/platform/UserDefaults.hpp"

#include <filesystem>
#include <mutex>
#include <string_view>

namespace corvane {

/// User defaults kept in a property-list file in the data folder, where macOS would use the
/// application's preferences domain. The file is read on every call, so several processes see
/// each other's changes; two processes writing at the same moment may lose one change.
class PlistFileUserDefaults final : public UserDefaults {
public:
    /// The file's name inside the data folder.
    static constexpr std::string_view fileName = "dev.tessik.Corvane.plist";

    explicit PlistFileUserDefaults(std::filesystem::path url) : url_(std::move(url)) {}

    std::optional<Value> value(const std::string& key) const override;
    /// Throws `std::runtime_error` when the file cannot be read back or written; a damaged
    /// file is left as it is rather than replaced by one holding a single key.
    void set(const std::string& key, const Value& value) override;
    void remove(const std::string& key) override;
    std::vector<std::string> keys() const override;

private:
    mutable std::mutex mutex_;
    std::filesystem::path url_;
};

} // namespace corvane
