#pragma once

#include "CorvaneCore/platform/UserDefaults.hpp"

#include <map>
#include <mutex>

namespace corvane {

class InMemoryUserDefaults final : public UserDefaults {
public:
    std::optional<Value> value(const std::string& key) const override {
        std::lock_guard lock(mutex_);
        auto it = values_.find(key);
        if (it == values_.end()) return std::nullopt;
        return it->second;
    }
    void set(const std::string& key, const Value& value) override {
        std::lock_guard lock(mutex_);
        values_[key] = value;
    }
    void remove(const std::string& key) override {
        std::lock_guard lock(mutex_);
        values_.erase(key);
    }
    std::vector<std::string> keys() const override {
        std::lock_guard lock(mutex_);
        std::vector<std::string> result;
        for (const auto& entry : values_) result.push_back(entry.first);
        return result;
    }

private:
    mutable std::mutex mutex_;
    std::map<std::string, Value> values_;
};

} // namespace corvane
