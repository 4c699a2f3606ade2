#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane::text {

/// Trims spaces, tabs and line breaks (ASCII and the common Unicode ones) at both ends.
std::string_view trimmed(std::string_view text);
std::string lowercased(std::string_view text);
/// Upper-cases ASCII and the accented Latin-1 letters; other text is kept.
std::string uppercased(std::string_view text);
/// Whether one UTF-8 character (as `utf8Characters` gives it) is a letter or a digit: ASCII,
/// Latin-1 and Latin Extended-A letters, Greek, Cyrillic, and the CJK, kana and Hangul blocks.
bool isLetterOrDigit(std::string_view character);
/// The code point of one UTF-8 character; a malformed byte is itself.
char32_t codePoint(std::string_view character);
std::string utf8Encode(char32_t codePoint);
bool equalsIgnoringCase(std::string_view a, std::string_view b);
bool startsWithIgnoringCase(std::string_view text, std::string_view prefix);
std::vector<std::string> split(std::string_view text, char separator);
/// The part after the last "/", ignoring trailing slashes ("/Applications/Mail.app/" gives "Mail.app").
std::string lastPathComponent(std::string_view path);
/// Splits UTF-8 text into its code points' byte sequences; a malformed byte stands alone.
std::vector<std::string_view> utf8Characters(std::string_view text);

} // namespace corvane::text
