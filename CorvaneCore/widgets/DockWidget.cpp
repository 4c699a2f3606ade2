#include "CorvaneCore/widgets/DockWidget.hpp"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

template <std::size_t... I> DockWidget::Kind defaultKind(WidgetKind which, std::index_sequence<I...>) {
    using Value = DockWidgetKind::Value;
    static const std::array<DockWidget::Kind (*)(), sizeof...(I)> makers = {
        +[]() -> DockWidget::Kind { return Value(std::in_place_index<I>); }...};
    return makers[static_cast<std::size_t>(which)]();
}

} // namespace

DockWidget::Kind DockWidgetKind::defaults(WidgetKind which) {
    return defaultKind(which, std::make_index_sequence<std::variant_size_v<Value>>());
}

int DockWidgetKind::defaultSpan() const {
    switch (which()) {
    case WidgetKind::pomodoro:
    case WidgetKind::music:
    case WidgetKind::note:
    case WidgetKind::colourPicker:
    case WidgetKind::emoji:
    case WidgetKind::converter:
    case WidgetKind::claudeUsage:
        return 2;
    case WidgetKind::bookmarks:
    case WidgetKind::screenshots:
    case WidgetKind::files:
    case WidgetKind::shelf:
    case WidgetKind::water:
        return 3;
    case WidgetKind::calendar:
        switch (std::get<CalendarSettings>(value).style) {
        case CalendarTileStyle::agenda:
            return 3;
        case CalendarTileStyle::date:
            return 1;
        default:
            return 2;
        }
    case WidgetKind::reminders:
        switch (std::get<ReminderSettings>(value).style) {
        case ReminderTileStyle::next:
            return 2;
        case ReminderTileStyle::list:
            return 3;
        case ReminderTileStyle::count:
            return 1;
        }
        return 2;
    case WidgetKind::weather:
        return std::get<WeatherSettings>(value).style == WeatherTileStyle::forecast ? 3 : 2;
    case WidgetKind::github:
        return std::get<GitHubSettings>(value).shows == GitHubShows::contributions ? 4 : 3;
    default:
        return 1;
    }
}

int DockWidgetKind::maxSpan() const {
    switch (which()) {
    case WidgetKind::clipboard:
        return 1;
    case WidgetKind::battery:
    case WidgetKind::network:
    case WidgetKind::claudeUsage:
    case WidgetKind::colourPicker:
    case WidgetKind::converter:
        return 2;
    case WidgetKind::timer:
    case WidgetKind::pomodoro:
        return 3;
    default:
        return DockWidget::maxSpanOfAnyKind;
    }
}

DockWidget::DockWidget(Uuid id_, std::string name_, std::optional<int> slot_, Kind kind_,
                       std::optional<int> span_)
    : id(id_), name(std::move(name_)), slot(slot_), kind(std::move(kind_)) {
    span = clampedSpan(span_ ? *span_ : kind.defaultSpan(), kind);
}

int DockWidget::clampedSpan(long long value, const Kind& kind) {
    return static_cast<int>(std::min<long long>(std::max<long long>(value, minSpan), kind.maxSpan()));
}

std::optional<CollectionLayout> DockWidget::collectionLayout() const {
    if (auto collection = settings<Collection>()) return collection->layout;
    return std::nullopt;
}

void DockWidget::setCollectionLayout(std::optional<CollectionLayout> layout) {
    auto* collection = std::get_if<Collection>(&kind.value);
    if (collection && layout) collection->layout = *layout;
}

const std::vector<AppEntry>* DockWidget::apps() const {
    if (auto collection = settings<Collection>()) return &collection->apps;
    return nullptr;
}

void DockWidget::setApps(const std::optional<std::vector<AppEntry>>& newApps) {
    auto* collection = std::get_if<Collection>(&kind.value);
    if (collection && newApps) collection->apps = *newApps;
}

std::vector<std::string> DockWidget::replacesApps() const {
    if (kind.which() == WidgetKind::music) return {"com.apple.Music", "com.spotify.client"};
    return {};
}

} // namespace corvane
