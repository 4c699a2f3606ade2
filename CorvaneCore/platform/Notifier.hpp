#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace corvane {

/// Distributed notifications between the application's processes.
class Notifier {
public:
    /// Called with the notification's object: the text the poster attached, or none.
    using Handler = std::function<void(const std::optional<std::string>& object)>;
    using ObserverToken = std::uint64_t;

    virtual ~Notifier() = default;
    /// Posts `name` to every process of the user at once, with no object and no user info.
    virtual void post(const std::string& name) = 0;
    /// Calls `handler` on the main thread for each `name` posted, by any process of the user,
    /// this one included, so a process hears its own posts back. Main thread.
    virtual ObserverToken observe(const std::string& name, Handler handler) = 0;
    /// The handler is not called again, not even for a notification already on its way. An
    /// unknown token does nothing. Main thread.
    virtual void removeObserver(ObserverToken token) = 0;
};

} // namespace corvane
