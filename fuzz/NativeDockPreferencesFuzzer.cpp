// The macOS Dock's own look, remembered while the own Dock bar hides it.

#include "CorvaneCore/dock/NativeDockPreferences.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    NativeDockPreferences preferences;
    try {
        preferences = nativeDockPreferencesFromText(fuzz::text(data, size));
    } catch (const DecodingError&) {
        return 0;
    }
    FUZZ_CHECK(nativeDockPreferencesFromText(nativeDockPreferencesText(preferences)) == preferences);
    auto original = preferences.asUserOriginal();
    FUZZ_CHECK(original.asUserOriginal() == original);
    return 0;
}
