#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The language the interface is shown in, as the application's language setting holds it: a
/// language code with its script when it has one ("de", "zh-Hans"), or none to follow the system.
/// The user defaults keep it as "AppleLanguages", a list of language tags, most preferred first.
namespace InterfaceLanguage {

/// The setting a tag stands for: "de-CH" and "de_CH" give "de", "zh-Hant-TW" gives "zh-Hant".
/// None for a tag that does not start with a language code.
std::optional<std::string> fromTag(std::string_view tag);
/// The setting of the first language of the list; none for an empty list.
std::optional<std::string> fromPreferredLanguages(const std::vector<std::string>& languages);
/// The "AppleLanguages" list that selects the language; empty, so that the key is removed and
/// the system's languages apply, for none.
std::vector<std::string> preferredLanguages(const std::optional<std::string>& language);

} // namespace InterfaceLanguage

} // namespace corvane
