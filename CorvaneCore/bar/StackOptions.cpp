#include "CorvaneCore/bar/StackOptions.hpp"

#include "CorvaneCore/looks/LenientJson.hpp"
#include "CorvaneCore/support/RawValue.hpp"

namespace corvane {

std::string_view rawValue(StackOptions::ViewStyle style) {
    return style == StackOptions::ViewStyle::list ? "list" : "grid";
}

std::optional<StackOptions::ViewStyle> viewStyleFromRaw(std::string_view raw) {
    if (raw == "list") return StackOptions::ViewStyle::list;
    if (raw == "grid") return StackOptions::ViewStyle::grid;
    return std::nullopt;
}

std::string_view rawValue(StackOptions::SortOrder order) {
    switch (order) {
    case StackOptions::SortOrder::name:
        return "name";
    case StackOptions::SortOrder::kind:
        return "kind";
    case StackOptions::SortOrder::dateAdded:
        return "dateAdded";
    }
    return "name";
}

std::optional<StackOptions::SortOrder> sortOrderFromRaw(std::string_view raw) {
    using S = StackOptions::SortOrder;
    return caseWithRawValue({S::name, S::kind, S::dateAdded}, raw);
}

nlohmann::json encodeStackOptions(const StackOptions& options) {
    return {{"viewStyle", rawValue(options.viewStyle)}, {"sortOrder", rawValue(options.sortOrder)}};
}

StackOptions decodeStackOptions(const nlohmann::json& object) {
    StackOptions options;
    if (auto style = lenient::rawValue(object, "viewStyle", viewStyleFromRaw)) options.viewStyle = *style;
    if (auto order = lenient::rawValue(object, "sortOrder", sortOrderFromRaw)) options.sortOrder = *order;
    return options;
}

} // namespace corvane
