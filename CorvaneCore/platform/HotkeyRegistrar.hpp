#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace corvane {

/// The system's global hotkey registration. Main thread only.
class HotkeyRegistrar {
public:
    struct Registration {
        /// Zero on success.
        std::int32_t status = 0;
        /// The system's handle of the hotkey; none when registration failed.
        std::optional<std::uintptr_t> ref;
    };

    virtual ~HotkeyRegistrar() = default;
    /// Installs the one handler of hotkey presses; it receives the pressed hotkey's id.
    /// False when the system refused.
    virtual bool installHandler(std::uint32_t signature, std::function<void(std::uint32_t id)> onPress) = 0;
    /// `modifiers` are the system's own modifier bits.
    virtual Registration registerHotkey(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t signature,
                                        std::uint32_t id) = 0;
    virtual void unregisterHotkey(std::uintptr_t ref) = 0;
};

} // namespace corvane
