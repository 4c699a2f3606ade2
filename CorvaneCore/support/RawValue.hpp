#pragma once

// Reading back the text forms that enums are saved under: each enum has a `rawValue(Enum)`
// beside it, and these find the case whose text is `raw`.

#include <initializer_list>
#include <iterator>
#include <optional>
#include <string_view>
#include <type_traits>

namespace corvane {

template <typename Cases>
auto caseWithRawValue(const Cases& cases, std::string_view raw)
    -> std::optional<std::decay_t<decltype(*std::begin(cases))>> {
    for (auto value : cases)
        if (rawValue(value) == raw) return value;
    return std::nullopt;
}

template <typename Enum>
std::optional<Enum> caseWithRawValue(std::initializer_list<Enum> cases, std::string_view raw) {
    for (auto value : cases)
        if (rawValue(value) == raw) return value;
    return std::nullopt;
}

} // namespace corvane
