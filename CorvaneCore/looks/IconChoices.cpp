#include "CorvaneCore/looks/IconChoices.hpp"

#include "CorvaneCore/looks/LenientJson.hpp"

namespace corvane {

std::optional<std::string> IconChoices::packID(std::string_view key) const {
    auto it = perApp.find(std::string(key));
    if (it == perApp.end()) return defaultPackID;
    if (auto id = it->second.packID()) return *id;
    return std::nullopt;
}

void IconChoices::set(const Choice& choice, const std::string& key) {
    auto id = choice.packID();
    // No entry already means the default: the original icon when there is no default pack,
    // that pack otherwise.
    bool sameAsDefault = id ? *id == defaultPackID : !defaultPackID;
    if (sameAsDefault)
        perApp.erase(key);
    else
        perApp.insert_or_assign(key, choice);
}

nlohmann::json encodeIconChoices(const IconChoices& choices) {
    auto perApp = nlohmann::json::object();
    for (const auto& [key, choice] : choices.perApp) {
        if (auto id = choice.packID())
            perApp[key] = {{"pack", {{"_0", *id}}}};
        else
            perApp[key] = {{"original", nlohmann::json::object()}};
    }
    nlohmann::json object{{"perApp", perApp}};
    lenient::putIfSet(object, "defaultPackID", choices.defaultPackID);
    return object;
}

IconChoices decodeIconChoices(const nlohmann::json& object) {
    IconChoices choices;
    choices.defaultPackID = lenient::string(object, "defaultPackID");
    auto perApp = lenient::value(object, "perApp");
    if (!perApp || !perApp->is_object()) return choices;
    for (const auto& [key, choice] : perApp->items()) {
        if (auto pack = lenient::value(choice, "pack")) {
            if (auto id = lenient::string(*pack, "_0"))
                choices.perApp.insert_or_assign(key, IconChoices::Choice::pack(*id));
        } else if (lenient::value(choice, "original")) {
            choices.perApp.insert_or_assign(key, IconChoices::Choice::original());
        }
    }
    return choices;
}

} // namespace corvane
