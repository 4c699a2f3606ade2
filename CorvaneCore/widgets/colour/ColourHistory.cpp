#include "CorvaneCore/widgets/colour/ColourHistory.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"

#include <algorithm>

namespace corvane {

void ColourHistory::add(PickedColour colour, int limit) {
    auto earlier = std::find_if(colours.begin(), colours.end(),
                                [&](const PickedColour& c) { return c.sameColour(colour); });
    if (earlier != colours.end()) {
        colour.isPinned = colour.isPinned || earlier->isPinned;
        colours.erase(earlier);
    }
    colours.insert(colours.begin(), std::move(colour));
    trim(limit);
}

void ColourHistory::trim(int limit) {
    const auto kept = static_cast<std::size_t>(std::clamp(limit, minimumLimit, maximumLimit));
    for (auto index = colours.size(); index > 0 && colours.size() > kept; --index)
        if (!colours[index - 1].isPinned) colours.erase(colours.begin() + static_cast<std::ptrdiff_t>(index - 1));
}

void ColourHistory::togglePin(const Uuid& id) {
    for (auto& colour : colours)
        if (colour.id == id) colour.isPinned = !colour.isPinned;
}

void ColourHistory::remove(const Uuid& id) {
    std::erase_if(colours, [&](const PickedColour& c) { return c.id == id; });
}

void ColourHistory::clearUnpinned() {
    std::erase_if(colours, [](const PickedColour& c) { return !c.isPinned; });
}

std::string colourHistoryText(const ColourHistory& history) {
    auto colours = Json::array();
    for (const auto& c : history.colours)
        colours.push_back(Json::object({{"id", c.id.string()},
                                        {"red", c.red},
                                        {"green", c.green},
                                        {"blue", c.blue},
                                        {"pickedAt", c.pickedAt.sinceReferenceDate},
                                        {"isPinned", c.isPinned}}));
    return prettyJson(Json::object({{"version", history.version}, {"colours", std::move(colours)}}));
}

ColourHistory colourHistoryFromText(std::string_view text) {
    auto json = parseJson(text);
    JsonReader reader(json);
    reader.object();
    ColourHistory history;
    if (auto version = reader.optional("version")) history.version = version->integer<int>();
    if (auto colours = reader.optional("colours")) {
        for (const auto& entry : colours->array()) {
            entry.object();
            PickedColour colour;
            colour.id = entry["id"].uuid();
            auto channel = [&](std::string_view key) { return std::clamp(entry[key].integer<int>(), 0, 255); };
            colour.red = channel("red");
            colour.green = channel("green");
            colour.blue = channel("blue");
            if (auto pickedAt = entry.optional("pickedAt")) colour.pickedAt = Date{pickedAt->number()};
            if (auto pinned = entry.optional("isPinned")) colour.isPinned = pinned->boolean();
            history.colours.push_back(colour);
        }
    }
    return history;
}

} // namespace corvane
