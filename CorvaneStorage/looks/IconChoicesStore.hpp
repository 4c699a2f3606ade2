#pragma once

#include "CorvaneCore/looks/IconChoices.hpp"
#include "CorvaneStorage/storage/JsonFileStore.hpp"

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane {

struct IconChoicesCodec {
    static IconChoices empty() { return {}; }
    /// Throws `DecodingError` for text that is no JSON; the object itself decodes tolerantly.
    static IconChoices decode(std::string_view text);
    static std::string encode(const IconChoices& choices);
};

/// The user's icon choices, "icons.json".
class IconChoicesStore : public JsonFileStore<IconChoices, IconChoicesCodec> {
  public:
    explicit IconChoicesStore(std::filesystem::path url) : JsonFileStore(std::move(url)) {}

    const IconChoices& choices() const { return value(); }

    void useForAllApps(std::optional<std::string> packID) {
        change([&](IconChoices& choices) { choices.defaultPackID = std::move(packID); });
    }
    void set(const IconChoices::Choice& choice, const std::string& key) {
        change([&](IconChoices& choices) { choices.set(choice, key); });
    }
    void clear() {
        change([](IconChoices& choices) { choices = {}; });
    }
};

} // namespace corvane
