#pragma once

#include "CorvaneCore/platform/HotkeyRegistrar.hpp"

namespace corvane {

/// Global hotkeys through the Carbon event manager. Main thread only.
class CarbonHotkeyRegistrar final : public HotkeyRegistrar {
public:
    ~CarbonHotkeyRegistrar() override;
    bool installHandler(std::uint32_t signature, std::function<void(std::uint32_t)> onPress) override;
    Registration registerHotkey(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t signature,
                                std::uint32_t id) override;
    void unregisterHotkey(std::uintptr_t ref) override;

private:
    std::uint32_t signature_ = 0;
    std::function<void(std::uint32_t)> onPress_;
    void* handlerRef_ = nullptr;
};

} // namespace corvane
