#pragma once

#include "CorvaneCore/widgets/colour/ColourHistory.hpp"
#include "CorvaneStorage/storage/JsonFileStore.hpp"

#include <filesystem>
#include <string_view>

namespace corvane {

struct ColourHistoryCodec {
    static ColourHistory empty() { return {}; }
    static ColourHistory decode(std::string_view text) { return colourHistoryFromText(text); }
    static std::string encode(const ColourHistory& history) { return colourHistoryText(history); }
};

/// The picked colours, "colours.json", shared by every process that shows a colour picker.
class ColourStore : public JsonFileStore<ColourHistory, ColourHistoryCodec> {
public:
    static constexpr std::string_view changedNotification = "dev.tessik.corvane.colours-changed";

    explicit ColourStore(std::filesystem::path url, Notifier* notifier = nullptr)
        : JsonFileStore(std::move(url), notifier, std::string(changedNotification)) {}

    const ColourHistory& history() const { return value(); }

    void add(PickedColour colour, int limit) {
        change([&](ColourHistory& history) { history.add(std::move(colour), limit); });
    }
    void togglePin(Uuid id) {
        change([&](ColourHistory& history) { history.togglePin(id); });
    }
    void remove(Uuid id) {
        change([&](ColourHistory& history) { history.remove(id); });
    }
    void clearUnpinned() {
        change([](ColourHistory& history) { history.clearUnpinned(); });
    }
};

} // namespace corvane
