#pragma once

#include "CorvaneCore/platform/UserDefaults.hpp"

namespace corvane {

/// User defaults in the application's preferences domain, through the preferences service. Named
/// explicitly so that the command-line tool shares the application's settings. Written without a
/// macOS compiler at hand: keep it thin.
class CFPreferencesUserDefaults final : public UserDefaults {
public:
    explicit CFPreferencesUserDefaults(std::string domain = "dev.tessik.Corvane") : domain_(std::move(domain)) {}

    std::optional<Value> value(const std::string& key) const override;
    void set(const std::string& key, const Value& value) override;
    void remove(const std::string& key) override;
    std::vector<std::string> keys() const override;
    void synchronize() override;

private:
    std::string domain_;
};

} // namespace corvane
