#include "CorvaneApp/bar/BarWindowController.hpp"

#include "CorvaneCore/bar/DockEditing.hpp"

#include <algorithm>
#include <cmath>

namespace corvane {

BarWindowController::BarWindowController(Scheduler& scheduler, Callbacks callbacks)
    : scheduler_(scheduler), callbacks_(std::move(callbacks)), layout_(std::make_unique<BarLayout>(content_.scene)) {}

BarWindowController::~BarWindowController() {
    if (reveal_) scheduler_.cancel(*reveal_);
}

void BarWindowController::show(Content content) {
    content_ = std::move(content);
    std::optional<double> length;
    if (content_.screenLength > 0) length = content_.screenLength;
    layout_ = std::make_unique<BarLayout>(content_.scene, length);
    // A drag over tiles that are gone would move the wrong item.
    drag_.reset();
    layout_->frame(lens_, frame_);
}

bool BarWindowController::updateCaptions(const std::vector<Uuid>& widgets,
                                         const std::function<std::optional<std::string>(const Uuid&)>& caption) {
    bool changed = false;
    for (std::size_t i = 0; i < content_.scene.tiles.size() && i < content_.origins.size(); ++i) {
        const auto* tileModel = model(i);
        const auto* widget = tileModel ? tileModel->widget() : nullptr;
        const auto* id = widget ? widget->address.widgetID() : nullptr;
        if (!id || std::find(widgets.begin(), widgets.end(), *id) == widgets.end()) continue;
        auto text = caption(*id);
        auto& tile = content_.scene.tiles[i];
        if (!text || tile.caption == text) continue;
        tile.caption = std::move(text);
        changed = true;
    }
    return changed;
}

Rect BarWindowController::panelFrame(const Rect& screen) const {
    double width = layout_->width(), height = layout_->height();
    switch (content_.scene.style.position) {
    case DockPosition::bottom:
        return {screen.midX() - width / 2, screen.minY(), width, height};
    case DockPosition::left:
        return {screen.minX(), screen.midY() - height / 2, width, height};
    case DockPosition::right:
        return {screen.maxX() - width, screen.midY() - height / 2, width, height};
    }
    return {};
}

std::optional<BarScreen> BarWindowController::home(const std::vector<BarScreen>& screens) {
    if (screens.empty()) return std::nullopt;
    auto screen = screens.front();
    if (!(screen.scale > 0)) screen.scale = 1;
    return screen;
}

double BarWindowController::along(Point point) const {
    return content_.scene.style.position == DockPosition::bottom ? point.x : point.y;
}

std::optional<std::size_t> BarWindowController::tileAt(Point point) const {
    auto holds = [&](std::size_t i) {
        const auto& kind = content_.scene.tiles[i].kind;
        return kind != BarTile::Kind::separator && frame_.tiles[i].drawn.contains(point);
    };
    if (frame_.hovered && *frame_.hovered < frame_.tiles.size() && holds(*frame_.hovered)) return frame_.hovered;
    for (std::size_t i = 0; i < frame_.tiles.size(); ++i)
        if (holds(i)) return i;
    return std::nullopt;
}

const DockTileModel* BarWindowController::model(std::size_t tile) const {
    if (tile >= content_.origins.size()) return nullptr;
    const auto& origin = content_.origins[tile];
    switch (origin.section) {
    case BarTileOrigin::Section::apps:
        return origin.index < content_.layout.apps.size() ? &content_.layout.apps[origin.index] : nullptr;
    case BarTileOrigin::Section::others:
        return origin.index < content_.layout.others.size() ? &content_.layout.others[origin.index] : nullptr;
    case BarTileOrigin::Section::none:
        return nullptr;
    }
    return nullptr;
}

std::optional<BarClick> BarWindowController::click(std::size_t tile) const {
    using Kind = BarClick::Kind;
    if (tile >= content_.scene.tiles.size()) return std::nullopt;
    if (content_.scene.tiles[tile].kind == BarTile::Kind::trash) return BarClick{.kind = Kind::openTrash};
    const auto* tileModel = model(tile);
    if (!tileModel) return std::nullopt;
    if (tileModel->id == WorkspaceDockLayout::ownTileID) return BarClick{.kind = Kind::showApp};
    if (const auto* app = tileModel->app()) {
        if (app->running) return BarClick{.kind = Kind::activateApp, .target = app->running->path.value_or(""), .pid = app->running->pid};
        if (app->entry) return BarClick{.kind = Kind::launchApp, .target = app->entry->path};
        return std::nullopt;
    }
    if (const auto* widget = tileModel->widget()) {
        if (const auto* id = widget->address.widgetID()) return BarClick{.kind = Kind::openWidget, .id = *id};
        return std::nullopt;
    }
    if (const auto* stack = tileModel->stack()) return BarClick{.kind = Kind::openWidgetStack, .id = stack->id};
    if (const auto* file = tileModel->file())
        return BarClick{.kind = file->isDirectory ? Kind::openStack : Kind::openFile, .target = file->path};
    if (const auto* url = tileModel->url()) return BarClick{.kind = Kind::openLink, .target = url->url};
    return std::nullopt; // a spacer
}

void BarWindowController::pointerMoved(Point point) {
    lens_.follow(along(point));
    layout_->frame(lens_, frame_);
}

void BarWindowController::pointerExited() {
    if (drag_) return; // a drag goes on outside the bar
    lens_.follow(std::nullopt);
    layout_->frame(lens_, frame_);
}

bool BarWindowController::tick(double seconds) {
    lens_.step(seconds);
    layout_->frame(lens_, frame_);
    return !lens_.isSettled();
}

void BarWindowController::pressed(Point point) {
    drag_.reset();
    if (auto tile = tileAt(point)) drag_ = Drag{*tile, point};
}

std::ptrdiff_t BarWindowController::appsIndexAt(Point point) const {
    std::ptrdiff_t to = 0;
    const auto& centers = layout_->centers();
    for (std::size_t i = 0; i < content_.origins.size() && i < centers.size(); ++i)
        if (content_.origins[i].section == BarTileOrigin::Section::apps && centers[i] < along(point))
            to = static_cast<std::ptrdiff_t>(content_.origins[i].index) + 1;
    return to;
}

std::optional<std::size_t> BarWindowController::draggedTile() const {
    if (!drag_ || !drag_->moving) return std::nullopt;
    return drag_->tile;
}

void BarWindowController::dragged(Point point) {
    if (!drag_) return;
    if (!drag_->moving) {
        // Only the application section is reordered, and only a workspace's own items move.
        const auto* tileModel = model(drag_->tile);
        bool movable = content_.workspace && tileModel && content_.origins[drag_->tile].section == BarTileOrigin::Section::apps;
        if (!movable || std::hypot(point.x - drag_->from.x, point.y - drag_->from.y) < dragThreshold) return;
        drag_->moving = true;
    }
    drag_->to = appsIndexAt(point);
    pointerMoved(point);
}

void BarWindowController::released(Point point) {
    auto drag = std::exchange(drag_, std::nullopt);
    if (!drag) return;
    if (!drag->moving) {
        // A click is a press and release on the same tile.
        if (tileAt(point) == drag->tile)
            if (auto decision = click(drag->tile); decision && callbacks_.onClick) callbacks_.onClick(*decision);
        return;
    }
    const auto* tileModel = model(drag->tile);
    const auto& profile = *content_.workspace;
    Rect view{0, 0, layout_->width(), layout_->height()};
    // Dropped away from the bar: the tile goes, as it does from the system's Dock.
    bool away = !view.contains(point);
    std::vector<DockItem> items;
    if (away && DockEditing::isRemovable(*tileModel))
        items = DockEditing::itemsAfterRemoving(tileModel->id, content_.layout, profile);
    else if (!away)
        items = DockEditing::itemsAfterMoving(tileModel->id, drag->to, content_.layout, profile);
    else
        return;
    if (items != profile.items && callbacks_.onItemsChanged) callbacks_.onItemsChanged(std::move(items));
}

void BarWindowController::scrolled(double delta, double at, bool precise) {
    int step = precise ? scrollSteps_.step(delta, at) : wheelNotches_.step(delta, at);
    if (step != 0 && callbacks_.onStep) callbacks_.onStep(step);
}

void BarWindowController::setShown(bool shown) {
    if (shown == shown_) return;
    shown_ = shown;
    if (callbacks_.onVisibilityChange) callbacks_.onVisibilityChange(shown);
}

void BarWindowController::updateVisibility(const DockVisibility::Input& input, double revealDelay) {
    visibility_ = input;
    visibility_->isShown = shown_;
    switch (DockVisibility::decide(*visibility_)) {
    case DockVisibility::Decision::show:
        if (reveal_) scheduler_.cancel(*std::exchange(reveal_, std::nullopt));
        return setShown(true);
    case DockVisibility::Decision::hide:
        if (reveal_) scheduler_.cancel(*std::exchange(reveal_, std::nullopt));
        return setShown(false);
    case DockVisibility::Decision::reveal:
        // One look after the delay, with whatever the inputs are by then.
        if (reveal_) return;
        reveal_ = scheduler_.schedule(revealDelay, [this] {
            reveal_.reset();
            if (!visibility_) return;
            auto later = *visibility_;
            later.isShown = false;
            if (DockVisibility::decide(later) != DockVisibility::Decision::hide) setShown(true);
        });
        return;
    }
}

} // namespace corvane
