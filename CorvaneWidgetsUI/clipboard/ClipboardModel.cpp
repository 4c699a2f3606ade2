#include "CorvaneWidgetsUI/clipboard/ClipboardModel.hpp"

namespace corvane {

ClipboardModel::ClipboardModel(DockWidget widget, ClipboardServices services)
    : widget_(std::move(widget)), services_(std::move(services)), queue_(services_.makeQueue()),
      ogSource_(std::make_unique<ClipboardOGSource>(services_.http, services_.makeQueue())),
      source_(std::make_unique<ClipboardSource>(
          services_.storeURL,
          ClipboardSourceServices{services_.pasteboard, services_.secrets, services_.clock, services_.scheduler,
                                  services_.log},
          *ogSource_, *queue_)) {
    source_->onUpdate = [alive = std::weak_ptr<bool>(alive_), this](const ClipboardState& state) {
        services_.mainQueue.post([alive, this, state] {
            if (alive.lock()) apply(state);
        });
    };
    pollInFlight_ = true;
    run([settings = settings(), frontmost = frontmost()](ClipboardSource& s) { return s.state(settings, frontmost); },
        true);
    timer_ = services_.scheduler.schedule(pollInterval, [this] { tick(); });
}

ClipboardModel::~ClipboardModel() {
    if (timer_) services_.scheduler.cancel(*timer_);
    alive_.reset();
    // The queue finishes its work, the last save included, before the source goes; a preview
    // still under way then finds the source closed.
    queue_->async([source = source_.get()] { source->close(); });
    queue_.reset();
    source_.reset();
    ogSource_.reset();
}

ClipboardSettings ClipboardModel::settings() const {
    if (const auto* settings = widget_.clipboardSettings()) return *settings;
    return {};
}

ClipboardFrontmostApp ClipboardModel::frontmost() const {
    return services_.frontmostApplication ? services_.frontmostApplication() : ClipboardFrontmostApp{};
}

template <typename Operation> void ClipboardModel::run(Operation operation, bool isPoll) {
    queue_->async([operation = std::move(operation), source = source_.get(), alive = std::weak_ptr<bool>(alive_), isPoll,
                   this]() mutable {
        auto state = operation(*source);
        services_.mainQueue.post([alive, isPoll, this, state = std::move(state)]() mutable {
            if (!alive.lock()) return;
            if (isPoll) pollInFlight_ = false;
            apply(std::move(state));
        });
    });
}

void ClipboardModel::tick() {
    timer_ = services_.scheduler.schedule(pollInterval, [this] { tick(); });
    // A poll still waiting behind a save is enough; polls never pile up.
    if (pollInFlight_) return;
    pollInFlight_ = true;
    run([settings = settings(), frontmost = frontmost()](ClipboardSource& s) {
        return s.pollAndMerge(settings, frontmost);
    },
        true);
}

void ClipboardModel::apply(ClipboardState state) {
    if (state == state_) return;
    state_ = std::move(state);
    if (onChange) onChange();
}

void ClipboardModel::setWidget(DockWidget widget) {
    widget_ = std::move(widget);
    run([settings = settings(), frontmost = frontmost()](ClipboardSource& s) { return s.state(settings, frontmost); });
}

void ClipboardModel::setSearchText(std::string text) {
    if (text == searchText_) return;
    searchText_ = std::move(text);
    if (onChange) onChange();
}

void ClipboardModel::panelOpened() {
    run([](ClipboardSource& s) { return s.markSeen(); });
}

void ClipboardModel::write(const Uuid& id) {
    run([id](ClipboardSource& s) { return s.write(id); });
}

void ClipboardModel::togglePin(const Uuid& id) {
    run([id](ClipboardSource& s) { return s.togglePin(id); });
}

void ClipboardModel::remove(const Uuid& id) {
    run([id](ClipboardSource& s) { return s.remove(id); });
}

void ClipboardModel::clearUnpinned() {
    run([](ClipboardSource& s) { return s.clearUnpinned(); });
}

void ClipboardModel::forgetEverything() {
    run([](ClipboardSource& s) { return s.forgetEverything(); });
}

} // namespace corvane
