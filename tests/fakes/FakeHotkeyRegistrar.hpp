#pragma once

#include "CorvaneCore/platform/HotkeyRegistrar.hpp"

#include <map>
#include <set>
#include <utility>

namespace corvane {

class FakeHotkeyRegistrar final : public HotkeyRegistrar {
public:
    struct Entry {
        std::uint16_t keyCode;
        std::uint32_t modifiers;
        std::uint32_t signature;
        std::uint32_t id;
    };

    bool installHandler(std::uint32_t, std::function<void(std::uint32_t)> onPress) override {
        ++handlersInstalled;
        press = std::move(onPress);
        return true;
    }
    Registration registerHotkey(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t signature,
                                std::uint32_t id) override {
        if (takenElsewhere.contains({keyCode, modifiers})) return {-9878, std::nullopt};
        auto ref = nextRef++;
        live.emplace(ref, Entry{keyCode, modifiers, signature, id});
        return {0, ref};
    }
    void unregisterHotkey(std::uintptr_t ref) override { live.erase(ref); }

    int handlersInstalled = 0;
    std::function<void(std::uint32_t)> press;
    std::map<std::uintptr_t, Entry> live;
    std::set<std::pair<std::uint16_t, std::uint32_t>> takenElsewhere;
    std::uintptr_t nextRef = 100;
};

} // namespace corvane
