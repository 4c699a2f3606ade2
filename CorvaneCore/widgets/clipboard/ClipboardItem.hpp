#pragma once

#include "CorvaneCore/support/Base64.hpp"
#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/support/Uuid.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// One thing the user copied: a text, an image or a file.
struct ClipboardItem {
    enum class Kind { text, image, file };

    /// Longer copies keep only their first this many characters (Unicode scalars).
    static constexpr std::size_t maximumTextLength = 200000;
    /// The bullets of a masked text: one per character, within these bounds.
    static constexpr std::size_t minimumMaskLength = 8;
    static constexpr std::size_t maximumMaskLength = 32;
    static constexpr std::string_view bullet = "\u2022";

    Uuid id;
    Kind kind = Kind::text;
    Date capturedAt;
    /// Pinned items never age out and stay at the top.
    bool isPinned = false;
    std::optional<std::string> text;
    std::optional<Bytes> imageData;
    /// A "file://" URL string.
    std::optional<std::string> fileURL;
    /// The text's UTF-8 size, the image's bytes or the file's size.
    std::int64_t byteSize = 0;
    std::optional<std::string> sourceAppBundleID;
    std::optional<std::string> sourceAppName;
    /// The text looks like a secret and is shown masked.
    bool isSensitive = false;
    std::optional<std::string> ogTitle;
    std::optional<std::string> ogDescription;
    std::optional<Bytes> ogImageData;
    std::optional<Date> ogFetchedAt;

    bool operator==(const ClipboardItem&) const = default;

    /// One line for a list row: the text with its white space folded (masked when sensitive), the
    /// file's name, or the image's size.
    std::string previewLine() const;
    /// The bullet once per character of the text, at least 8 and at most 32 times.
    std::string maskedLine() const;
    /// A link whose web preview has something to show.
    bool shouldShowOGPreview() const;
    /// Same kind and same text, image bytes or file.
    bool hasSameContent(const ClipboardItem& other) const;

    /// An absolute http or https address and nothing else (white space around it aside).
    static bool looksLikeURL(std::string_view text);
    /// Whether a copied text is probably a password, key or token. URLs, texts under 8
    /// characters, texts with white space and paths never are; otherwise it takes a mix of
    /// character classes typical of generated secrets.
    static bool looksSensitive(std::string_view text);
    /// Whether a preview may be fetched from `url`: http or https to a public host name or address.
    /// Loopback, private, link-local and other special addresses (in any notation), "localhost",
    /// ".local" and similar names, and single-label names all stay unfetched, so that a copied
    /// link never makes the Mac talk to its own network.
    static bool isFetchableHost(std::string_view url);
};

std::string_view toString(ClipboardItem::Kind kind);

/// The history as JSON: an array of items with the fields as keys, dates as seconds since the
/// reference date, bytes as base64, absent optionals left out. Decoding is tolerant of missing
/// keys (a missing id gets a fresh one, a missing kind follows the payload) and drops items of a
/// kind it does not know; wrong types throw `DecodingError`.
std::string clipboardHistoryText(const std::vector<ClipboardItem>& items);
std::vector<ClipboardItem> clipboardHistoryFromText(std::string_view text);

} // namespace corvane
