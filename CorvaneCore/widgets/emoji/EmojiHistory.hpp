#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The emoji used lately, most recent first, each once.
struct EmojiHistory {
    static constexpr int currentVersion = 1;
    /// Three rows of the picker's recent strip.
    static constexpr std::size_t limit = 24;

    int version = currentVersion;
    std::vector<std::string> emoji;

    /// Moves `symbol` to the front (adding it when new) and forgets the oldest beyond `limit`.
    /// Empty text is ignored.
    void add(std::string symbol);
    void clear() { emoji.clear(); }

    bool operator==(const EmojiHistory&) const = default;
};

/// The emoji file: pretty-printed, keys sorted; duplicates and overflow in a hand-edited file are
/// dropped on reading. Throws `DecodingError`.
std::string emojiHistoryText(const EmojiHistory& history);
EmojiHistory emojiHistoryFromText(std::string_view text);

} // namespace corvane
