#pragma once

#include "CorvaneCore/platform/DockSettings.hpp"

namespace corvane {

class InMemoryDockSettings final : public DockSettings {
public:
    NativeDockPreferences current() const override { return values; }
    std::optional<std::string> orientation() const override { return orientationValue; }
    void write(const NativeDockPreferences& preferences) override {
        values = preferences;
        ++writeCount;
    }

    NativeDockPreferences values;
    std::optional<std::string> orientationValue;
    int writeCount = 0;
};

} // namespace corvane
