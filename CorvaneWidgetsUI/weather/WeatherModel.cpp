#include "CorvaneWidgetsUI/weather/WeatherModel.hpp"

namespace corvane {

namespace {

bool samePlace(const WeatherSettings& a, const WeatherSettings& b) {
    return a.latitude == b.latitude && a.longitude == b.longitude && a.unit == b.unit;
}

} // namespace

WeatherModel::WeatherModel(DockWidget widget, const WeatherFetch& fetch, ConnectedWidgetServices services)
    : widget_(std::move(widget)), fetch_(fetch), services_(services), timer_(services.scheduler),
      self_(std::make_shared<WeatherModel*>(this)) {}

WeatherModel::~WeatherModel() = default;

const WeatherSettings& WeatherModel::settings() const {
    static const WeatherSettings none;
    auto found = widget_.weatherSettings();
    return found ? *found : none;
}

void WeatherModel::setWidget(DockWidget widget) {
    auto old = settings();
    widget_ = std::move(widget);
    if (samePlace(old, settings())) return changed();
    ++generation_;
    reading_.reset();
    failed_ = false;
    changed();
    if (isLoading_)
        refetch_ = true;
    else
        refresh();
}

void WeatherModel::setSavesEnergy(bool savesEnergy) {
    savesEnergy_ = savesEnergy;
    timer_.setInterval(savesEnergy_ ? energySavingInterval : refreshInterval);
}

void WeatherModel::start() {
    timer_.start(savesEnergy_ ? energySavingInterval : refreshInterval, [this] { refresh(); });
}

void WeatherModel::stop() {
    timer_.stop();
}

void WeatherModel::refresh() {
    const auto& place = settings();
    if (!place.latitude || !place.longitude || isLoading_) return;
    isLoading_ = true;
    changed();
    std::weak_ptr<WeatherModel*> self = self_;
    auto& fetch = fetch_;
    auto& mainQueue = services_.mainQueue;
    auto latitude = *place.latitude, longitude = *place.longitude;
    auto unit = place.unit;
    auto generation = generation_;
    services_.work.async([self, &fetch, &mainQueue, latitude, longitude, unit, generation] {
        auto reading = fetch.reading(latitude, longitude, unit);
        mainQueue.post([self, reading = std::move(reading), generation]() mutable {
            if (auto model = self.lock()) (*model)->publish(std::move(reading), generation);
        });
    });
}

void WeatherModel::publish(std::optional<WeatherReading> reading, unsigned generation) {
    isLoading_ = false;
    if (generation == generation_) {
        failed_ = !reading;
        if (reading) reading_ = std::move(reading);
    }
    changed();
    if (refetch_) {
        refetch_ = false;
        refresh();
    }
}

void WeatherModel::changed() {
    if (onChange) onChange();
}

} // namespace corvane
