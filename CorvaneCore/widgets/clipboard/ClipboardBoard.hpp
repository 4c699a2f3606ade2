#pragma once

#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/clipboard/ClipboardState.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What the clipboard panel shows in place of a list.
struct ClipboardPanelMessage {
    std::string title;
    /// None when the title says it all.
    std::optional<std::string> detail;

    bool operator==(const ClipboardPanelMessage&) const = default;
};

/// The pure rules of the clipboard history.
namespace ClipboardBoard {

/// Pinned first, then newest first; items captured at the same moment keep their order.
std::vector<ClipboardItem> order(std::vector<ClipboardItem> items);
/// The items whose text, file name, web preview or source application contains every word of
/// `text`, ignoring case. Sensitive texts are matched by their application only, so typing part
/// of a secret never confirms it. Blank text keeps everything.
std::vector<ClipboardItem> search(const std::vector<ClipboardItem>& items, std::string_view text);
/// The number on the tile: every item in the history.
int tileCount(const ClipboardState& state);

/// Drops unpinned items captured before now − `retentionDays` days, then the oldest unpinned
/// items beyond `historyLimit`. Pinned items are never dropped. Limits under 1 count as 1.
/// Returns the items in display order.
std::vector<ClipboardItem> applyRetention(std::vector<ClipboardItem> items, const ClipboardSettings& settings,
                                          Date now);

/// Puts a fresh capture at the top. Copying the same thing again moves the earlier item up instead
/// of adding a second one: it keeps its identity, pin and web preview, and takes the new moment
/// and source. Returns the items in display order.
std::vector<ClipboardItem> insert(std::vector<ClipboardItem> items, ClipboardItem item);

/// Adds the stored items that memory does not hold (by id); memory wins for the others.
std::vector<ClipboardItem> merge(std::vector<ClipboardItem> memory, const std::vector<ClipboardItem>& stored);

/// The message in place of the list: loading, an empty history, or a search without result.
std::optional<ClipboardPanelMessage> panelMessage(const ClipboardState& state, std::string_view searchText);

} // namespace ClipboardBoard

} // namespace corvane
