#include "CorvaneWidgetsUI/github/GitHubModel.hpp"

#include "CorvaneCore/widgets/github/GitHubBoard.hpp"

namespace corvane {

GitHubModel::GitHubModel(DockWidget widget, GitHubSource& source, ConnectedWidgetServices services)
    : widget_(std::move(widget)), source_(source), services_(services), timer_(services.scheduler),
      self_(std::make_shared<GitHubModel*>(this)) {}

const GitHubSettings& GitHubModel::settings() const {
    static const GitHubSettings none;
    auto found = widget_.githubSettings();
    return found ? *found : none;
}

void GitHubModel::setWidget(DockWidget widget) {
    auto old = settings();
    widget_ = std::move(widget);
    if (old == settings()) return changed();
    ++generation_;
    if (isLoading_)
        reload_ = true;
    else
        refresh();
}

void GitHubModel::setSavesEnergy(bool savesEnergy) {
    savesEnergy_ = savesEnergy;
    timer_.setInterval(savesEnergy_ ? energySavingInterval : refreshInterval);
}

void GitHubModel::start() {
    timer_.start(savesEnergy_ ? energySavingInterval : refreshInterval, [this] { refresh(); });
}

void GitHubModel::stop() {
    timer_.stop();
}

void GitHubModel::refresh() {
    if (isLoading_) return;
    isLoading_ = true;
    changed();
    std::weak_ptr<GitHubModel*> self = self_;
    auto& source = source_;
    auto& mainQueue = services_.mainQueue;
    auto generation = generation_;
    services_.work.async([self, &source, &mainQueue, settings = settings(), generation] {
        auto result = source.load(settings);
        mainQueue.post([self, result = std::move(result), generation]() mutable {
            if (auto model = self.lock()) (*model)->publish(std::move(result), generation);
        });
    });
}

void GitHubModel::publish(GitHubSource::Result result, unsigned generation) {
    isLoading_ = false;
    // A load for settings since changed is dropped; the reload below replaces it.
    if (generation == generation_) {
        items_ = GitHubBoard::select(std::move(result.items), settings());
        contributions_ = std::move(result.contributions);
        trouble_ = std::move(result.trouble);
        hasRead_ = true;
    }
    changed();
    if (reload_) {
        reload_ = false;
        refresh();
    }
}

void GitHubModel::changed() {
    if (onChange) onChange();
}

} // namespace corvane
