#pragma once

#include "CorvaneCore/platform/Log.hpp"

#include <string>
#include <vector>

namespace corvane {

class CapturingLog final : public Log {
public:
    struct Line {
        Level level;
        std::string category;
        std::string message;
    };
    void write(Level level, const std::string& category, const std::string& message) override {
        lines.push_back({level, category, message});
    }
    bool contains(const std::string& message) const {
        for (const auto& line : lines)
            if (line.message == message) return true;
        return false;
    }
    std::vector<Line> lines;
};

} // namespace corvane
