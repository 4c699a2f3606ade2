#include "CorvaneCore/workspace/DockItem.hpp"

#include "CorvaneCore/support/RawValue.hpp"
#include "CorvaneCore/support/Text.hpp"

namespace corvane {

std::string_view rawValue(SpacerVariant variant) {
    switch (variant) {
    case SpacerVariant::small: return "small-spacer-tile";
    case SpacerVariant::flex: return "flex-spacer-tile";
    case SpacerVariant::default_: return "spacer-tile";
    }
    return "spacer-tile";
}

std::optional<SpacerVariant> spacerVariantFromRaw(std::string_view raw) {
    return caseWithRawValue({SpacerVariant::small, SpacerVariant::flex, SpacerVariant::default_}, raw);
}

std::string_view displayName(SpacerVariant variant) {
    switch (variant) {
    case SpacerVariant::small: return "Small spacer";
    case SpacerVariant::flex: return "Flex spacer";
    case SpacerVariant::default_: return "Spacer";
    }
    return "Spacer";
}

std::string FileEntry::resolvedName() const {
    return displayName ? *displayName : text::lastPathComponent(path);
}

std::string FileEntry::badgeLetter() const {
    // The characters point into the name, which must outlive the loop.
    const auto name = resolvedName();
    for (auto character : text::utf8Characters(name))
        if (text::isLetterOrDigit(character)) return text::uppercased(character);
    return "•";
}

FileEntry FileEntry::withBadge(std::optional<std::string> hex) const {
    FileEntry copy = *this;
    copy.badgeColorHex = std::move(hex);
    return copy;
}

std::string DockItem::displayName() const {
    if (auto entry = app()) return entry->displayName ? *entry->displayName : text::lastPathComponent(entry->path);
    if (auto variant = spacer()) return std::string(corvane::displayName(*variant));
    if (auto entry = file()) return entry->resolvedName();
    auto entry = url();
    return entry->displayName ? *entry->displayName : entry->url;
}

std::string_view DockItem::caseName() const {
    static constexpr std::string_view names[] = {"app", "spacer", "file", "url"};
    return names[value.index()];
}

} // namespace corvane
