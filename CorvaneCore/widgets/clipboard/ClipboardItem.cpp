#include "CorvaneCore/widgets/clipboard/ClipboardItem.hpp"

#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/widgets/clipboard/WebAddress.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

namespace corvane {

namespace {

constexpr std::size_t kPreviewLength = 100;

bool isAsciiSpace(char32_t c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f'; }

bool isWhiteSpace(char32_t c) {
    return isAsciiSpace(c) || c == 0x85 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) ||
           c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F || c == 0x3000;
}

std::string byteCountText(std::int64_t bytes) {
    char buffer[32];
    if (bytes < 1000) std::snprintf(buffer, sizeof buffer, "%lld bytes", static_cast<long long>(bytes));
    else if (bytes < 1000000) std::snprintf(buffer, sizeof buffer, "%.0f KB", static_cast<double>(bytes) / 1e3);
    else std::snprintf(buffer, sizeof buffer, "%.1f MB", static_cast<double>(bytes) / 1e6);
    return buffer;
}

// ---- addresses

bool isPublicIPv4(std::uint32_t a) {
    auto in = [a](std::uint32_t network, int bits) {
        return bits == 0 || (a >> (32 - bits)) == (network >> (32 - bits));
    };
    return !(in(0x00000000, 8) ||  // "this" network
             in(0x0A000000, 8) ||  // private
             in(0x64400000, 10) || // carrier-grade NAT
             in(0x7F000000, 8) ||  // loopback
             in(0xA9FE0000, 16) || // link-local
             in(0xAC100000, 12) || // private
             in(0xC0000000, 24) || // protocol assignments
             in(0xC0A80000, 16) || // private
             in(0xC6120000, 15) || // benchmarking
             in(0xE0000000, 4) ||  // multicast
             in(0xF0000000, 4));   // reserved and broadcast
}

bool isNumericLabel(std::string_view label) {
    if (label.empty()) return false;
    if (label.size() > 2 && label[0] == '0' && (label[1] == 'x' || label[1] == 'X'))
        return std::all_of(label.begin() + 2, label.end(), [](char c) { return std::isxdigit(static_cast<unsigned char>(c)); });
    return std::all_of(label.begin(), label.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Only the canonical dotted quad: resolvers also take "127.1", "0x7f.0.0.1" or "2130706433"
// for loopback, so every other numeric form is refused outright by the caller.
std::optional<std::uint32_t> canonicalIPv4(std::string_view host) {
    auto labels = text::split(host, '.');
    if (labels.size() != 4) return std::nullopt;
    std::uint32_t address = 0;
    for (const auto& label : labels) {
        if (label.empty() || label.size() > 3 || (label.size() > 1 && label[0] == '0')) return std::nullopt;
        if (!std::all_of(label.begin(), label.end(), [](char c) { return c >= '0' && c <= '9'; })) return std::nullopt;
        auto value = std::stoul(label);
        if (value > 255) return std::nullopt;
        address = (address << 8) | static_cast<std::uint32_t>(value);
    }
    return address;
}

bool isPublicIPv6(std::string_view host) {
    if (host.find('%') != std::string_view::npos) return false; // zone ids only exist on local links
    std::array<unsigned char, 16> a{};
    if (::inet_pton(AF_INET6, std::string(host).c_str(), a.data()) != 1) return false;
    auto embeddedIPv4 = [&] {
        return static_cast<std::uint32_t>(a[12]) << 24 | static_cast<std::uint32_t>(a[13]) << 16 |
               static_cast<std::uint32_t>(a[14]) << 8 | a[15];
    };
    bool firstTenZero = std::all_of(a.begin(), a.begin() + 10, [](unsigned char b) { return b == 0; });
    if (firstTenZero && a[10] == 0xFF && a[11] == 0xFF) return isPublicIPv4(embeddedIPv4()); // mapped
    if (firstTenZero && a[10] == 0 && a[11] == 0) return false; // unspecified, loopback, old compatible form
    static constexpr std::array<unsigned char, 12> nat64{0x00, 0x64, 0xFF, 0x9B};
    if (std::equal(nat64.begin(), nat64.end(), a.begin())) return isPublicIPv4(embeddedIPv4());
    if ((a[0] & 0xFE) == 0xFC) return false;                  // unique local
    if (a[0] == 0xFE && (a[1] & 0xC0) == 0x80) return false;  // link-local
    if (a[0] == 0xFE && (a[1] & 0xC0) == 0xC0) return false;  // old site-local
    if (a[0] == 0xFF) return false;                           // multicast
    return true;
}

bool isPublicName(std::string_view host) {
    if (host.ends_with('.')) host.remove_suffix(1);
    auto labels = text::split(host, '.');
    if (labels.size() < 2 || std::any_of(labels.begin(), labels.end(), [](const auto& l) { return l.empty(); }))
        return false;
    if (isNumericLabel(labels.back())) {
        auto address = canonicalIPv4(host);
        return address && isPublicIPv4(*address);
    }
    for (std::string_view local : {".localhost", ".local", ".localdomain", ".internal", ".home.arpa", ".lan",
                                   ".intranet", ".corp", ".home"})
        if (("." + std::string(host)).ends_with(local)) return false;
    return true;
}

// ---- coding

Json encodeItem(const ClipboardItem& item) {
    auto json = Json::object({{"id", item.id.string()},
                              {"kind", toString(item.kind)},
                              {"capturedAt", item.capturedAt.sinceReferenceDate},
                              {"isPinned", item.isPinned},
                              {"byteSize", item.byteSize},
                              {"isSensitive", item.isSensitive}});
    auto put = [&](const char* key, const auto& value) {
        if (value) json[key] = *value;
    };
    put("text", item.text);
    put("fileURL", item.fileURL);
    put("sourceAppBundleID", item.sourceAppBundleID);
    put("sourceAppName", item.sourceAppName);
    put("ogTitle", item.ogTitle);
    put("ogDescription", item.ogDescription);
    if (item.imageData) json["imageData"] = base64Encode(*item.imageData);
    if (item.ogImageData) json["ogImageData"] = base64Encode(*item.ogImageData);
    if (item.ogFetchedAt) json["ogFetchedAt"] = item.ogFetchedAt->sinceReferenceDate;
    return json;
}

std::optional<ClipboardItem> decodeItem(const JsonReader& entry) {
    entry.object();
    ClipboardItem item;
    auto text = [&](const char* key) -> std::optional<std::string> {
        if (auto value = entry.optional(key)) return value->string();
        return std::nullopt;
    };
    auto data = [&](const char* key) -> std::optional<Bytes> {
        if (auto value = entry.optional(key)) return value->data();
        return std::nullopt;
    };
    item.id = entry.has("id") ? entry["id"].uuid() : Uuid::generate();
    item.text = text("text");
    item.imageData = data("imageData");
    item.fileURL = text("fileURL");
    if (auto kind = entry.optional("kind")) {
        auto name = kind->string();
        if (name == "text") item.kind = ClipboardItem::Kind::text;
        else if (name == "image") item.kind = ClipboardItem::Kind::image;
        else if (name == "file") item.kind = ClipboardItem::Kind::file;
        else return std::nullopt; // written by a later version; nothing here could show it
    } else {
        item.kind = item.fileURL     ? ClipboardItem::Kind::file
                    : item.imageData ? ClipboardItem::Kind::image
                                     : ClipboardItem::Kind::text;
    }
    if (auto value = entry.optional("capturedAt")) item.capturedAt = Date{value->number()};
    if (auto value = entry.optional("isPinned")) item.isPinned = value->boolean();
    if (auto value = entry.optional("byteSize")) item.byteSize = value->integer<std::int64_t>();
    if (auto value = entry.optional("isSensitive")) item.isSensitive = value->boolean();
    item.sourceAppBundleID = text("sourceAppBundleID");
    item.sourceAppName = text("sourceAppName");
    item.ogTitle = text("ogTitle");
    item.ogDescription = text("ogDescription");
    item.ogImageData = data("ogImageData");
    if (auto value = entry.optional("ogFetchedAt")) item.ogFetchedAt = Date{value->number()};
    return item;
}

} // namespace

std::string_view toString(ClipboardItem::Kind kind) {
    switch (kind) {
    case ClipboardItem::Kind::text: return "text";
    case ClipboardItem::Kind::image: return "image";
    case ClipboardItem::Kind::file: return "file";
    }
    return "text";
}

std::string ClipboardItem::maskedLine() const {
    auto length = text ? text::utf8Characters(*text).size() : 0;
    std::string line;
    for (auto n = std::clamp(length, minimumMaskLength, maximumMaskLength); n > 0; --n) line += bullet;
    return line;
}

std::string ClipboardItem::previewLine() const {
    switch (kind) {
    case Kind::image: return "Image, " + byteCountText(byteSize);
    case Kind::file: return fileURL ? text::lastPathComponent(DockURLString::path(*fileURL)) : "File";
    case Kind::text: break;
    }
    if (!text) return {};
    if (isSensitive) return maskedLine();
    std::string line;
    std::size_t characters = 0;
    bool pendingSpace = false;
    for (auto character : text::utf8Characters(*text)) {
        if (isWhiteSpace(text::codePoint(character))) {
            pendingSpace = !line.empty();
            continue;
        }
        if (characters == kPreviewLength) return line + "\u2026";
        if (pendingSpace) line += ' ', ++characters, pendingSpace = false;
        if (characters == kPreviewLength) return line + "\u2026";
        line += character;
        ++characters;
    }
    return line;
}

bool ClipboardItem::shouldShowOGPreview() const {
    return kind == Kind::text && !isSensitive && ((ogTitle && !ogTitle->empty()) || (ogImageData && !ogImageData->empty()));
}

bool ClipboardItem::hasSameContent(const ClipboardItem& other) const {
    if (kind != other.kind) return false;
    switch (kind) {
    case Kind::text: return text == other.text;
    case Kind::image: return imageData == other.imageData;
    case Kind::file: return fileURL == other.fileURL;
    }
    return false;
}

bool ClipboardItem::looksLikeURL(std::string_view candidate) {
    auto trimmedText = text::trimmed(candidate);
    return !trimmedText.empty() && WebAddress::parse(trimmedText).has_value();
}

bool ClipboardItem::looksSensitive(std::string_view candidate) {
    if (looksLikeURL(candidate)) return false;
    auto characters = text::utf8Characters(candidate);
    if (characters.size() < 8) return false;
    if (candidate.starts_with('/') || candidate.starts_with("~/")) return false;
    bool lower = false, upper = false, digit = false, symbol = false;
    for (auto character : characters) {
        auto c = text::codePoint(character);
        if (isWhiteSpace(c)) return false;
        if (c >= 'a' && c <= 'z') lower = true;
        else if (c >= 'A' && c <= 'Z') upper = true;
        else if (c >= '0' && c <= '9') digit = true;
        else if (c >= 0x80 && text::isLetterOrDigit(character)) lower = true;
        else symbol = true;
    }
    if (!lower && !upper) return false; // numbers, dates and phone numbers
    int classes = lower + upper + digit + symbol;
    // Three classes is what password rules ask for; long letter-and-digit runs are how API keys,
    // tokens and hex secrets look.
    return classes >= 3 || (characters.size() >= 32 && digit);
}

bool ClipboardItem::isFetchableHost(std::string_view url) {
    auto address = WebAddress::parse(text::trimmed(url));
    if (!address) return false;
    if (address->isIPv6Literal) return isPublicIPv6(address->host);
    return isPublicName(address->host);
}

std::string clipboardHistoryText(const std::vector<ClipboardItem>& items) {
    auto array = Json::array();
    for (const auto& item : items) array.push_back(encodeItem(item));
    return prettyJson(array);
}

std::vector<ClipboardItem> clipboardHistoryFromText(std::string_view text) {
    auto json = parseJson(text);
    JsonReader reader(json);
    std::vector<ClipboardItem> items;
    for (const auto& entry : reader.array())
        if (auto item = decodeItem(entry)) items.push_back(std::move(*item));
    return items;
}

} // namespace corvane
