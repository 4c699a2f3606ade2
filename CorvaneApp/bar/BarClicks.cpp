#include "CorvaneApp/bar/BarClicks.hpp"

#include "CorvaneCore/widgets/WidgetAddress.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace corvane::BarClicks {

bool actsInPlace(WidgetKind kind) {
    switch (kind) {
    case WidgetKind::timer:
    case WidgetKind::stopwatch:
    case WidgetKind::pomodoro:
    case WidgetKind::water:
    case WidgetKind::music:
    case WidgetKind::shortcut:
    case WidgetKind::airdrop:
    case WidgetKind::keyboardLock:
    case WidgetKind::bookmarks:
    case WidgetKind::files:
    case WidgetKind::screenshots:
    case WidgetKind::shelf:
    case WidgetKind::timeProgress:
        return true;
    default:
        return false;
    }
}

StackPanel stackPanel(const std::filesystem::path& folder, const JSONValue& stackOptions,
                      const FolderStack::Lister& list) {
    auto text = folder.string();
    while (text.size() > 1 && text.back() == '/') text.pop_back();
    StackPanel panel;
    if (const auto* stored = stackOptions.object())
        for (const auto& key : {text, text + "/"})
            if (auto found = stored->find(key); found != stored->end()) {
                panel.options = decodeStackOptions(found->second.toJson());
                break;
            }
    std::filesystem::path trimmed(text);
    panel.title = trimmed.filename().string();
    if (panel.title.empty()) panel.title = text;
    panel.items = FolderStack::items(trimmed, panel.options.sortOrder, list);
    return panel;
}

std::optional<Uuid> launchedWidget(const std::string& kind, const WidgetsFile& widgets, const Profile* active) {
    auto wanted = fromCaseName<WidgetKind>(kind);
    if (!wanted) return std::nullopt;
    std::vector<Uuid> onActiveBar;
    if (active)
        for (const auto& item : active->items)
            if (const auto* app = item.app())
                if (auto address = WidgetAddress::fromBundleIdentifier(app->bundleIdentifier))
                    if (const auto* widget = widgets.widget(*address)) onActiveBar.push_back(widget->id);
    std::optional<Uuid> anywhere;
    for (const auto& widget : widgets.widgets) {
        if (widget.kind.which() != *wanted) continue;
        if (std::find(onActiveBar.begin(), onActiveBar.end(), widget.id) != onActiveBar.end()) return widget.id;
        if (!anywhere) anywhere = widget.id;
    }
    return anywhere;
}

} // namespace corvane::BarClicks
