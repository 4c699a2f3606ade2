#include "CorvaneCore/widgets/clipboard/WebPreviewPage.hpp"

#include "CorvaneCore/support/Text.hpp"

#include <array>
#include <cctype>
#include <map>
#include <utility>
#include <vector>

namespace corvane {

namespace {

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

std::size_t findIgnoringCase(std::string_view text, std::string_view needle, std::size_t from) {
    for (auto at = from; at + needle.size() <= text.size(); ++at)
        if (text::startsWithIgnoringCase(text.substr(at), needle)) return at;
    return std::string_view::npos;
}

using Attributes = std::vector<std::pair<std::string, std::string>>;

// Reads the attributes of the tag whose name ends at `at`; stops at the closing ">" (or the end
// of the page) and leaves `at` after it.
Attributes readAttributes(std::string_view html, std::size_t& at) {
    Attributes attributes;
    while (at < html.size()) {
        while (at < html.size() && (isSpace(html[at]) || html[at] == '/')) ++at;
        if (at >= html.size()) break;
        if (html[at] == '>') {
            ++at;
            break;
        }
        auto nameStart = at;
        while (at < html.size() && !isSpace(html[at]) && html[at] != '=' && html[at] != '>' && html[at] != '/') ++at;
        std::string name = text::lowercased(html.substr(nameStart, at - nameStart));
        while (at < html.size() && isSpace(html[at])) ++at;
        std::string value;
        if (at < html.size() && html[at] == '=') {
            ++at;
            while (at < html.size() && isSpace(html[at])) ++at;
            if (at < html.size() && (html[at] == '"' || html[at] == '\'')) {
                auto quote = html[at++];
                auto close = html.find(quote, at);
                if (close == std::string_view::npos) close = html.size();
                value = std::string(html.substr(at, close - at));
                at = std::min(close + 1, html.size());
            } else {
                auto valueStart = at;
                while (at < html.size() && !isSpace(html[at]) && html[at] != '>') ++at;
                value = std::string(html.substr(valueStart, at - valueStart));
            }
        }
        if (name.empty()) {
            ++at; // a stray character such as an unmatched quote
            continue;
        }
        attributes.emplace_back(std::move(name), std::move(value));
    }
    return attributes;
}

std::optional<std::string> cleaned(std::string_view raw) {
    auto value = std::string(text::trimmed(WebPreviewPage::decodeEntities(raw)));
    if (value.empty()) return std::nullopt;
    return value;
}

const std::map<std::string_view, char32_t>& namedEntities() {
    static const std::map<std::string_view, char32_t> entities{
        {"amp", '&'},       {"lt", '<'},        {"gt", '>'},        {"quot", '"'},      {"apos", '\''},
        {"nbsp", ' '},      {"ndash", 0x2013},  {"mdash", 0x2014},  {"hellip", 0x2026}, {"lsquo", 0x2018},
        {"rsquo", 0x2019},  {"ldquo", 0x201C},  {"rdquo", 0x201D},  {"laquo", 0x00AB},  {"raquo", 0x00BB},
        {"middot", 0x00B7}, {"bull", 0x2022},   {"copy", 0x00A9},   {"reg", 0x00AE},    {"trade", 0x2122},
        {"euro", 0x20AC},   {"pound", 0x00A3},  {"yen", 0x00A5},    {"cent", 0x00A2},   {"deg", 0x00B0},
        {"times", 0x00D7},  {"eacute", 0x00E9}, {"egrave", 0x00E8}, {"agrave", 0x00E0}, {"uuml", 0x00FC},
        {"ouml", 0x00F6},   {"auml", 0x00E4},   {"szlig", 0x00DF},  {"ccedil", 0x00E7}, {"ntilde", 0x00F1},
    };
    return entities;
}

} // namespace

std::string WebPreviewPage::decodeEntities(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        auto amp = text.find('&', at);
        if (amp == std::string_view::npos) {
            out.append(text.substr(at));
            break;
        }
        out.append(text.substr(at, amp - at));
        auto semicolon = text.find(';', amp + 1);
        // Entity names are short; a far-away ";" belongs to something else.
        if (semicolon == std::string_view::npos || semicolon - amp > 12) {
            out += '&';
            at = amp + 1;
            continue;
        }
        auto name = text.substr(amp + 1, semicolon - amp - 1);
        std::optional<char32_t> decoded;
        if (name.size() >= 2 && name[0] == '#') {
            bool hex = name[1] == 'x' || name[1] == 'X';
            auto digits = name.substr(hex ? 2 : 1);
            bool valid = !digits.empty() && digits.size() <= 8;
            std::uint32_t value = 0;
            for (char c : digits) {
                auto u = static_cast<unsigned char>(c);
                if (hex ? !std::isxdigit(u) : !std::isdigit(u)) {
                    valid = false;
                    break;
                }
                value = value * (hex ? 16 : 10) + static_cast<std::uint32_t>(std::isdigit(u) ? u - '0' : (u | 0x20) - 'a' + 10);
            }
            if (valid) {
                bool usable = value != 0 && value <= 0x10FFFF && !(value >= 0xD800 && value <= 0xDFFF);
                decoded = usable ? static_cast<char32_t>(value) : char32_t{0xFFFD};
            }
        } else if (auto found = namedEntities().find(name); found != namedEntities().end()) {
            decoded = found->second;
        }
        if (decoded) {
            out += text::utf8Encode(*decoded);
            at = semicolon + 1;
        } else {
            out += '&';
            at = amp + 1;
        }
    }
    return out;
}

std::optional<std::string> WebPreviewPage::metaContent(std::string_view html, std::string_view key) {
    std::size_t at = 0;
    while ((at = findIgnoringCase(html, "<meta", at)) != std::string_view::npos) {
        at += 5;
        if (at < html.size() && !isSpace(html[at])) continue; // "<metadata" and the like
        std::optional<std::string> content;
        bool keyMatches = false;
        for (auto& [name, value] : readAttributes(html, at)) {
            if ((name == "property" || name == "name") && text::equalsIgnoringCase(text::trimmed(value), key))
                keyMatches = true;
            else if (name == "content" && !content)
                content = std::move(value);
        }
        if (keyMatches && content)
            if (auto value = cleaned(*content)) return value;
    }
    return std::nullopt;
}

std::optional<std::string> WebPreviewPage::titleElement(std::string_view html) {
    std::size_t at = 0;
    while ((at = findIgnoringCase(html, "<title", at)) != std::string_view::npos) {
        at += 6;
        auto close = html.find('>', at);
        if (close == std::string_view::npos) return std::nullopt;
        if (close != at && !isSpace(html[at])) continue; // "<titles>" is another tag
        auto textStart = close + 1;
        auto textEnd = html.find('<', textStart);
        if (textEnd == std::string_view::npos) return std::nullopt;
        if (textEnd > textStart && text::startsWithIgnoringCase(html.substr(textEnd), "</title>"))
            if (auto value = cleaned(html.substr(textStart, textEnd - textStart))) return value;
        at = textEnd;
    }
    return std::nullopt;
}

WebPreviewPage WebPreviewPage::read(std::string_view html) {
    auto first = [&](std::initializer_list<std::string_view> keys) -> std::optional<std::string> {
        for (auto key : keys)
            if (auto value = metaContent(html, key)) return value;
        return std::nullopt;
    };
    WebPreviewPage page;
    page.title = first({"og:title", "twitter:title"});
    if (!page.title) page.title = titleElement(html);
    page.description = first({"og:description", "twitter:description", "description"});
    page.imageReference = first({"og:image", "og:image:url", "og:image:secure_url", "twitter:image"});
    return page;
}

} // namespace corvane
