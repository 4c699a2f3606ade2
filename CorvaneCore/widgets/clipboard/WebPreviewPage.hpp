#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// What a web page says about itself in its meta tags, read without an HTML parser: pages are
/// outside input, so the reader only scans and never fails.
struct WebPreviewPage {
    std::optional<std::string> title;
    std::optional<std::string> description;
    /// As the page wrote it; may be relative.
    std::optional<std::string> imageReference;

    /// Open Graph first, then Twitter cards, then the plain description and the title element.
    static WebPreviewPage read(std::string_view html);

    /// The `content` of the first meta tag whose `property` or `name` attribute equals `key`
    /// (ignoring case), the attributes in any order, quoted with single or double quotes (or
    /// unquoted). Entities decoded, white space trimmed; an empty value counts as none.
    static std::optional<std::string> metaContent(std::string_view html, std::string_view key);
    /// The text of the first `<title …>text</title>` that holds no other tag.
    static std::optional<std::string> titleElement(std::string_view html);
    /// Decodes the named entities that show up in titles and descriptions, and every numeric
    /// one (`&#…;`, `&#x…;`); anything else is left as written. Invalid code points become U+FFFD.
    static std::string decodeEntities(std::string_view text);
};

} // namespace corvane
