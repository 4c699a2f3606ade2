#pragma once

#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/widgets/weather/WeatherReading.hpp"
#include "CorvaneWidgetsUI/support/RefreshTimer.hpp"
#include "CorvaneWidgetsUI/weather/WeatherFetch.hpp"

#include <functional>
#include <memory>
#include <optional>

namespace corvane {

/// The live weather widget: fetches its place's weather every twenty minutes (hourly while
/// saving energy) on the work queue and publishes the result on the main thread. A failed fetch
/// keeps the last reading on screen and raises `failed`. Main thread.
class WeatherModel {
  public:
    static constexpr double refreshInterval = 1200;
    static constexpr double energySavingInterval = 3600;

    /// `fetch` and the services must outlive the model.
    WeatherModel(DockWidget widget, const WeatherFetch& fetch, ConnectedWidgetServices services);
    ~WeatherModel();
    WeatherModel(const WeatherModel&) = delete;
    WeatherModel& operator=(const WeatherModel&) = delete;

    const DockWidget& widget() const { return widget_; }
    const std::optional<WeatherReading>& reading() const { return reading_; }
    bool isLoading() const { return isLoading_; }
    bool failed() const { return failed_; }
    bool savesEnergy() const { return savesEnergy_; }

    /// Called after every published change.
    std::function<void()> onChange;

    /// A new place or unit drops the reading (its numbers belong to the old one) and fetches at
    /// once; other changes only redraw.
    void setWidget(DockWidget widget);
    void setSavesEnergy(bool savesEnergy);

    void start();
    void stop();
    /// Fetches unless the place is not set yet or a fetch is under way.
    void refresh();

  private:
    const WeatherSettings& settings() const;
    void publish(std::optional<WeatherReading> reading, unsigned generation);
    void changed();

    DockWidget widget_;
    const WeatherFetch& fetch_;
    ConnectedWidgetServices services_;
    RefreshTimer timer_;
    std::optional<WeatherReading> reading_;
    bool isLoading_ = false;
    bool failed_ = false;
    bool savesEnergy_ = false;
    /// Counts place and unit changes, so that a fetch for the old place is not published.
    unsigned generation_ = 0;
    bool refetch_ = false;
    /// Expires with the model: work that comes back afterwards finds it gone.
    std::shared_ptr<WeatherModel*> self_;
};

} // namespace corvane
