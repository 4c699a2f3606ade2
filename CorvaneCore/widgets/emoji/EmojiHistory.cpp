#include "CorvaneCore/widgets/emoji/EmojiHistory.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"

#include <algorithm>

namespace corvane {

void EmojiHistory::add(std::string symbol) {
    if (symbol.empty()) return;
    std::erase(emoji, symbol);
    emoji.insert(emoji.begin(), std::move(symbol));
    if (emoji.size() > limit) emoji.resize(limit);
}

std::string emojiHistoryText(const EmojiHistory& history) {
    return prettyJson(Json::object({{"version", history.version}, {"emoji", history.emoji}}));
}

EmojiHistory emojiHistoryFromText(std::string_view text) {
    auto json = parseJson(text);
    JsonReader reader(json);
    reader.object();
    EmojiHistory history;
    if (auto version = reader.optional("version")) history.version = version->integer<int>();
    if (auto emoji = reader.optional("emoji")) {
        // Oldest first, so the file's first entry ends up in front.
        auto entries = emoji->array();
        for (auto it = entries.rbegin(); it != entries.rend(); ++it) history.add(it->string());
    }
    return history;
}

} // namespace corvane
