#pragma once

#include "CorvaneCore/widgets/WidgetAddress.hpp"
#include "CorvaneCore/widgets/WidgetsFile.hpp"
#include "CorvaneStorage/storage/JsonFileStore.hpp"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane {

struct WidgetsFileCodec {
    static WidgetsFile empty() { return WidgetsFile::empty(); }
    static WidgetsFile decode(std::string_view text);
    static std::string encode(const WidgetsFile& file);
};

/// A change asked of a widget the widgets file does not hold.
class WidgetNotFoundError : public std::runtime_error {
  public:
    explicit WidgetNotFoundError(const Uuid& id_)
        : std::runtime_error("Failed to find widget with id " + id_.string()), id(id_) {}

    Uuid id;
};

/// The widgets file, "widgets.json". Entries this build cannot read ride along untouched in
/// every save, and their slots stay reserved.
class WidgetStore : public JsonFileStore<WidgetsFile, WidgetsFileCodec> {
  public:
    /// When there is no widgets file yet but the older collections file exists, its collections
    /// become the widgets file, which is written at once so that the migration runs only once.
    /// The older file is left in place. A collections file that does not decode throws
    /// `DataFileError` (decode) naming it, and nothing is written.
    explicit WidgetStore(std::filesystem::path url,
                         std::optional<std::filesystem::path> legacyCollectionsURL = {},
                         Notifier* notifier = nullptr);
    /// Holds no widgets and saves nowhere: what the application uses when the widgets file
    /// cannot be read, so that the file is left as it is.
    explicit WidgetStore(Discarding) : JsonFileStore(discarding) {}

    const WidgetsFile& file() const { return value(); }
    WidgetsFile& file() { return value(); }

    /// The first widget the address names, as last loaded.
    const DockWidget* widget(const WidgetAddress& address) const { return file().widget(address); }

    /// Appends the widget, its span clamped, and saves. Returns the stored widget.
    DockWidget create(DockWidget widget);
    /// Gives the widget the smallest free slot (entries of newer builds keep theirs), unless it
    /// has one. Returns the widget's slot; none, and nothing written, when all are taken.
    std::optional<int> claimSlot(Uuid id);
    /// Unbinds the widget from its slot.
    void releaseSlot(Uuid id);
    /// Replaces the widget with the same id in place, its span clamped.
    void update(DockWidget widget);
    /// Removes the widget; an unknown id changes nothing, though the file is still saved.
    void remove(Uuid id);

  private:
    template <typename Change> auto changeWidget(const Uuid& id, Change&& change);
};

} // namespace corvane
