#pragma once

#include <string>

namespace corvane {

/// Distributed notifications between the application's processes.
class Notifier {
public:
    virtual ~Notifier() = default;
    /// Posts `name` to every process of the user at once, with no object and no user info.
    virtual void post(const std::string& name) = 0;
};

} // namespace corvane
