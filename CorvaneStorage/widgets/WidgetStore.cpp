#include "CorvaneStorage/widgets/WidgetStore.hpp"

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/widgets/WidgetCoding.hpp"

#include <algorithm>

namespace corvane {

WidgetsFile WidgetsFileCodec::decode(std::string_view text) {
    return widgetsFileFromText(text);
}

std::string WidgetsFileCodec::encode(const WidgetsFile& file) {
    return widgetsFileText(file);
}

WidgetStore::WidgetStore(std::filesystem::path url, std::optional<std::filesystem::path> legacyCollectionsURL,
                         Notifier* notifier)
    : JsonFileStore(std::move(url), notifier, std::string(DockSlot::widgetsChangedNotification)) {
    if (fileExistedOnLoad() || !legacyCollectionsURL) return;
    auto legacy = readFileIfExists(*legacyCollectionsURL);
    if (!legacy) return;
    WidgetsFile migrated;
    try {
        migrated = WidgetsFile::migrating(*legacy);
    } catch (const DecodingError& error) {
        throw DataFileError(DataFileError::Operation::decode, *legacyCollectionsURL, error.what());
    }
    // Another process may have migrated meanwhile; its file wins.
    auto lock = lockForChange();
    if (readFileIfExists(this->url())) {
        reload();
        return;
    }
    value() = std::move(migrated);
    save();
}

template <typename Change> auto WidgetStore::changeWidget(const Uuid& id, Change&& change) {
    return this->change([&](WidgetsFile& file) {
        auto* widget = file.widget(WidgetAddress::id(id));
        if (!widget) throw WidgetNotFoundError(id);
        return change(file, *widget);
    });
}

DockWidget WidgetStore::create(DockWidget widget) {
    widget.span = DockWidget::clampedSpan(widget.span, widget.kind);
    change([&](WidgetsFile& file) { file.widgets.push_back(widget); });
    return widget;
}

std::optional<int> WidgetStore::claimSlot(Uuid id) {
    auto lock = lockForChange();
    reload();
    auto* widget = file().widget(WidgetAddress::id(id));
    if (!widget) throw WidgetNotFoundError(id);
    if (widget->slot) return widget->slot;
    auto slot = file().freeSlot();
    if (!slot) return std::nullopt;
    widget->slot = slot;
    save();
    return slot;
}

void WidgetStore::releaseSlot(Uuid id) {
    changeWidget(id, [](WidgetsFile&, DockWidget& widget) { widget.slot.reset(); });
}

void WidgetStore::update(DockWidget widget) {
    widget.span = DockWidget::clampedSpan(widget.span, widget.kind);
    changeWidget(widget.id, [&](WidgetsFile&, DockWidget& stored) { stored = widget; });
}

void WidgetStore::remove(Uuid id) {
    change([&](WidgetsFile& file) {
        std::erase_if(file.widgets, [&](const DockWidget& widget) { return widget.id == id; });
    });
}

} // namespace corvane
