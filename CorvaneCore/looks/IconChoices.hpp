#pragma once

#include <nlohmann/json_fwd.hpp>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace corvane {

/// Which icons the user chose: one pack for every application, and per application a pack or
/// the original icon. Applications are keyed by bundle identifier, or by path without one.
struct IconChoices {
    struct Choice {
        struct Pack {
            std::string id;
            bool operator==(const Pack&) const = default;
        };
        struct Original {
            bool operator==(const Original&) const = default;
        };

        std::variant<Pack, Original> value;

        static Choice pack(std::string id) { return Choice{Pack{std::move(id)}}; }
        static Choice original() { return Choice{Original{}}; }
        const std::string* packID() const {
            auto pack = std::get_if<Pack>(&value);
            return pack ? &pack->id : nullptr;
        }

        bool operator==(const Choice&) const = default;
    };

    /// None: original icons for every application without a choice of its own.
    std::optional<std::string> defaultPackID;
    std::map<std::string, Choice> perApp;

    /// The pack to draw the application's icon from; none for the original icon.
    std::optional<std::string> packID(std::string_view key) const;
    /// Records a choice, storing only what differs from the default.
    void set(const Choice& choice, const std::string& key);

    bool operator==(const IconChoices&) const = default;
};

/// {"defaultPackID": …, "perApp": {key: {"pack": {"_0": id}} or {"original": {}}}}.
nlohmann::json encodeIconChoices(const IconChoices& choices);
/// Never fails: entries that are not a choice are left out, a mistyped default is none.
IconChoices decodeIconChoices(const nlohmann::json& object);

} // namespace corvane
