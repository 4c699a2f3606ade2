#include "CorvaneCore/widgets/WidgetsFile.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/widgets/WidgetAddress.hpp"
#include "CorvaneCore/widgets/WidgetCoding.hpp"

namespace corvane {

std::optional<Uuid> UnrecognizedWidget::id() const {
    auto member = raw.member("id");
    if (!member || !member->string()) return std::nullopt;
    return Uuid::parse(*member->string());
}

std::optional<long long> UnrecognizedWidget::slot() const {
    auto member = raw.member("slot");
    return member ? member->exactInteger() : std::nullopt;
}

WidgetsFile WidgetsFile::migrating(std::string_view legacyCollections) {
    auto json = parseJson(legacyCollections);
    JsonReader reader(json);
    reader.object();
    WidgetsFile file;
    for (const auto& collection : reader["collections"].array()) {
        collection.object();
        // The legacy file is read strictly: a collection without its slot is a broken file, and
        // a half-migrated one would lose collections silently.
        DockWidget::Collection apps;
        for (const auto& app : collection["apps"].array())
            apps.apps.push_back(decodeAppEntry(app));
        auto id = collection["id"].uuid();
        auto name = collection["name"].string();
        auto slot = collection["slot"].integer<int>();
        file.widgets.emplace_back(id, std::move(name), slot, DockWidget::Kind(std::move(apps)), 1);
    }
    return file;
}

std::optional<int> WidgetsFile::freeSlot() const {
    std::vector<long long> taken;
    for (const auto& widget : widgets)
        if (widget.slot) taken.push_back(*widget.slot);
    for (const auto& entry : unrecognized)
        if (auto slot = entry.slot()) taken.push_back(*slot);
    return DockSlot::freeSlot(taken);
}

const DockWidget* WidgetsFile::widget(const WidgetAddress& address) const {
    for (const auto& w : widgets)
        if (address.matches(w)) return &w;
    return nullptr;
}

DockWidget* WidgetsFile::widget(const WidgetAddress& address) {
    return const_cast<DockWidget*>(std::as_const(*this).widget(address));
}

} // namespace corvane
