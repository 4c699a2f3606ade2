#include "CorvaneCore/widgets/WidgetPlacement.hpp"

#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/widgets/WidgetAddress.hpp"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>

namespace corvane::WidgetPlacement {

namespace {

std::optional<WidgetAddress> addressOf(const DockItem& item) {
    auto app = item.app();
    if (!app || !app->bundleIdentifier) return std::nullopt;
    return WidgetAddress::fromBundleIdentifier(*app->bundleIdentifier);
}

void dropSmallStacks(std::vector<WidgetStack>& stacks) {
    std::erase_if(stacks, [](const WidgetStack& stack) { return stack.members.size() < 2; });
}

} // namespace

AppEntry entry(const DockWidget& widget, const std::string& helperPath) {
    AppEntry placeholder;
    placeholder.path = DockURLString::path(helperPath);
    placeholder.bundleIdentifier =
        widget.slot ? DockSlot::bundleIdentifier(*widget.slot) : DockSlot::widgetBundleIdentifier(widget.id);
    placeholder.displayName = widget.name;
    return placeholder;
}

bool contains(const DockWidget& widget, const Profile& profile) {
    return std::any_of(profile.items.begin(), profile.items.end(), [&](const DockItem& item) {
        auto address = addressOf(item);
        return address && address->matches(widget);
    });
}

std::set<std::string> replacedApps(const Profile& profile, const std::vector<DockWidget>& widgets) {
    std::set<std::string> replaced;
    for (const auto& widget : widgets) {
        auto apps = widget.replacesApps();
        if (!apps.empty() && contains(widget, profile)) replaced.insert(apps.begin(), apps.end());
    }
    return replaced;
}

Profile setting(const DockWidget& widget, bool shown, const Profile& profile, const std::string& helperPath) {
    Profile result = profile;
    if (shown) {
        if (!contains(widget, profile)) result.items.emplace_back(entry(widget, helperPath));
        return result;
    }
    std::erase_if(result.items, [&](const DockItem& item) {
        auto address = addressOf(item);
        return address && address->matches(widget);
    });
    return pruningStacks(result, [&](const Uuid& member) { return member != widget.id; });
}

Profile pruningStacks(const Profile& profile, const std::function<bool(const Uuid&)>& keeping) {
    Profile result = profile;
    for (auto& stack : result.stacks)
        std::erase_if(stack.members, [&](const Uuid& member) { return !keeping(member); });
    dropSmallStacks(result.stacks);
    return result;
}

Profile pruningMismatchedWidths(const Profile& profile, const std::vector<DockWidget>& widgets) {
    std::unordered_map<Uuid, int> spans;
    for (const auto& widget : widgets)
        spans.emplace(widget.id, widget.span);
    Profile result = profile;
    for (auto& stack : result.stacks) {
        std::vector<int> memberSpans;
        for (const auto& member : stack.members)
            if (auto it = spans.find(member); it != spans.end()) memberSpans.push_back(it->second);
        if (memberSpans.empty()) continue;
        std::map<int, int> counts;
        for (int span : memberSpans)
            ++counts[span];
        int top = 0;
        for (const auto& [span, count] : counts)
            top = std::max(top, count);
        // The earliest member's width among the most common ones settles a tie.
        int width = *std::find_if(memberSpans.begin(), memberSpans.end(),
                                  [&](int span) { return counts[span] == top; });
        std::erase_if(stack.members, [&](const Uuid& member) {
            auto it = spans.find(member);
            return it != spans.end() && it->second != width;
        });
    }
    dropSmallStacks(result.stacks);
    return result;
}

Profile keepingStacks(const Profile& source, const Profile& target, const std::vector<DockWidget>& widgets) {
    std::unordered_set<Uuid> shown;
    for (const auto& widget : widgets)
        if (contains(widget, target)) shown.insert(widget.id);
    Profile result = target;
    result.stacks = pruningStacks(source, [&](const Uuid& member) { return shown.contains(member); }).stacks;
    return result;
}

Profile syncing(const Profile& profile, const std::vector<DockWidget>& widgets,
                const std::vector<UnrecognizedWidget>& unrecognized,
                const std::function<std::string(std::optional<int> slot)>& helperPath) {
    std::unordered_set<Uuid> unknownIDs;
    std::vector<long long> unknownSlots;
    for (const auto& entryOfNewerBuild : unrecognized) {
        if (auto id = entryOfNewerBuild.id()) unknownIDs.insert(*id);
        if (auto slot = entryOfNewerBuild.slot()) unknownSlots.push_back(*slot);
    }

    Profile result = profile;
    std::unordered_set<Uuid> present;
    std::vector<DockItem> items;
    for (const auto& item : profile.items) {
        auto address = addressOf(item);
        if (!address) {
            items.push_back(item);
            continue;
        }
        auto known = std::find_if(widgets.begin(), widgets.end(),
                                  [&](const DockWidget& widget) { return address->matches(widget); });
        if (known != widgets.end()) {
            auto fresh = entry(*known, helperPath(known->slot));
            items.push_back(*item.app() == fresh ? item : DockItem(std::move(fresh)));
            present.insert(known->id);
            continue;
        }
        bool newerBuildsWidget = address->widgetID()
                                     ? unknownIDs.contains(*address->widgetID())
                                     : std::find(unknownSlots.begin(), unknownSlots.end(),
                                                 *address->slotNumber()) != unknownSlots.end();
        if (newerBuildsWidget) items.push_back(item);
    }
    result.items = std::move(items);

    result = pruningStacks(
        result, [&](const Uuid& member) { return present.contains(member) || unknownIDs.contains(member); });
    return pruningMismatchedWidths(result, widgets);
}

} // namespace corvane::WidgetPlacement
