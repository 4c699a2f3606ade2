#pragma once

#include "CorvaneCore/platform/Notifier.hpp"

#include <string>
#include <vector>

namespace corvane {

class RecordingNotifier final : public Notifier {
public:
    void post(const std::string& name) override { posted.push_back(name); }
    std::vector<std::string> posted;
};

} // namespace corvane
