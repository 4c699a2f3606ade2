#pragma once

// The live models of each kind, made by `makeLiveWidget`. Internal to the live models.

#include "CorvaneWidgetsUI/live/LiveWidget.hpp"

#include <memory>

namespace corvane::live {

/// A model whose reading never changes by itself: only new settings or a click change it.
class StillWidget : public LiveWidget {
  public:
    using LiveWidget::LiveWidget;

  protected:
    std::optional<Date> plan(Date) const override { return std::nullopt; }
};

/// A model that reads its source again every `interval` seconds.
class PolledWidget : public LiveWidget {
  public:
    PolledWidget(DockWidget widget, double interval) : LiveWidget(std::move(widget)), interval_(interval) {}

  protected:
    std::optional<Date> plan(Date now) const override { return now + interval_; }

  private:
    double interval_;
};

/// A reading that only says why there is nothing to show.
inline WidgetReading troubled(std::string_view trouble) {
    return WidgetReading{.trouble = std::string(trouble)};
}

/// A kind whose source this system or host lacks: it says so and never changes.
class MissingWidget final : public StillWidget {
  public:
    MissingWidget(DockWidget widget, std::string_view trouble)
        : StillWidget(std::move(widget)), trouble_(trouble) {}

  protected:
    WidgetReading read(Date) override { return troubled(trouble_); }

  private:
    std::string_view trouble_;
};

std::unique_ptr<LiveWidget> makeTimeWidget(const DockWidget& widget, const LiveWidgetPorts& ports);
std::unique_ptr<LiveWidget> makeSystemWidget(const DockWidget& widget, const LiveWidgetPorts& ports);
std::unique_ptr<LiveWidget> makeContentWidget(const DockWidget& widget, const LiveWidgetPorts& ports);

} // namespace corvane::live
