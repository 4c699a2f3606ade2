#pragma once

#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneWidgetsUI/github/GitHubSource.hpp"
#include "CorvaneWidgetsUI/support/RefreshTimer.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace corvane {

/// The live GitHub widget: loads through the source every two minutes (five while saving
/// energy) on the work queue and publishes each result whole on the main thread. Main thread.
class GitHubModel {
  public:
    static constexpr double refreshInterval = 120;
    static constexpr double energySavingInterval = 300;

    /// The source and the services must outlive the model.
    GitHubModel(DockWidget widget, GitHubSource& source, ConnectedWidgetServices services);
    GitHubModel(const GitHubModel&) = delete;
    GitHubModel& operator=(const GitHubModel&) = delete;

    const DockWidget& widget() const { return widget_; }
    /// What the board shows: selected and ordered by the widget's settings.
    const std::vector<GitHubItem>& items() const { return items_; }
    const std::optional<GitHubContributions>& contributions() const { return contributions_; }
    const std::optional<GitHubSource::Trouble>& trouble() const { return trouble_; }
    /// Whether any load has come back yet; before that the panel says "Asking GitHub…".
    bool hasRead() const { return hasRead_; }
    bool isLoading() const { return isLoading_; }
    bool savesEnergy() const { return savesEnergy_; }

    std::function<void()> onChange;

    /// Changed settings load again at once (after a load under way has come back).
    void setWidget(DockWidget widget);
    void setSavesEnergy(bool savesEnergy);

    void start();
    void stop();
    /// Loads unless a load is under way.
    void refresh();

  private:
    const GitHubSettings& settings() const;
    void publish(GitHubSource::Result result, unsigned generation);
    void changed();

    DockWidget widget_;
    GitHubSource& source_;
    ConnectedWidgetServices services_;
    RefreshTimer timer_;
    std::vector<GitHubItem> items_;
    std::optional<GitHubContributions> contributions_;
    std::optional<GitHubSource::Trouble> trouble_;
    bool hasRead_ = false;
    bool isLoading_ = false;
    bool savesEnergy_ = false;
    unsigned generation_ = 0;
    bool reload_ = false;
    std::shared_ptr<GitHubModel*> self_;
};

} // namespace corvane
