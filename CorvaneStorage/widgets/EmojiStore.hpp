#pragma once

#include "CorvaneCore/widgets/emoji/EmojiHistory.hpp"
#include "CorvaneStorage/storage/JsonFileStore.hpp"

#include <filesystem>
#include <string_view>

namespace corvane {

struct EmojiHistoryCodec {
    static EmojiHistory empty() { return {}; }
    static EmojiHistory decode(std::string_view text) { return emojiHistoryFromText(text); }
    static std::string encode(const EmojiHistory& history) { return emojiHistoryText(history); }
};

/// The recently used emoji, "emoji.json".
class EmojiStore : public JsonFileStore<EmojiHistory, EmojiHistoryCodec> {
public:
    static constexpr std::string_view changedNotification = "dev.tessik.corvane.emoji-changed";

    explicit EmojiStore(std::filesystem::path url, Notifier* notifier = nullptr)
        : JsonFileStore(std::move(url), notifier, std::string(changedNotification)) {}

    const EmojiHistory& history() const { return value(); }

    void add(std::string symbol) {
        change([&](EmojiHistory& history) { history.add(std::move(symbol)); });
    }
    void clear() {
        change([](EmojiHistory& history) { history.clear(); });
    }
};

} // namespace corvane
