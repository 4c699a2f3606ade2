#pragma once

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string_view>

namespace corvane {

/// How one folder opens as a stack on the own bar; stored per folder.
struct StackOptions {
    enum class ViewStyle { list, grid };
    enum class SortOrder { name, kind, dateAdded };

    ViewStyle viewStyle = ViewStyle::grid;
    SortOrder sortOrder = SortOrder::name;

    bool operator==(const StackOptions&) const = default;
};

std::string_view rawValue(StackOptions::ViewStyle style);
std::optional<StackOptions::ViewStyle> viewStyleFromRaw(std::string_view raw);
std::string_view rawValue(StackOptions::SortOrder order);
std::optional<StackOptions::SortOrder> sortOrderFromRaw(std::string_view raw);

/// {"viewStyle": …, "sortOrder": …}.
nlohmann::json encodeStackOptions(const StackOptions& options);
/// Never fails: a missing or unknown value keeps its default.
StackOptions decodeStackOptions(const nlohmann::json& object);

} // namespace corvane
