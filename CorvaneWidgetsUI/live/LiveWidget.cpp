#include "CorvaneWidgetsUI/live/LiveWidget.hpp"

#include "CorvaneWidgetsUI/live/LiveKinds.hpp"

namespace corvane {

bool LiveWidget::refresh(Date now) {
    auto fresh = read(now);
    next_ = plan(now);
    if (fresh == reading_) return false;
    reading_ = std::move(fresh);
    return true;
}

bool LiveWidget::tick(Date now) {
    return refresh(now);
}

bool LiveWidget::setWidget(DockWidget widget, Date now) {
    // Each model reads its own kind's settings; a widget that changed kind needs a new model.
    if (widget.kind.which() != widget_.kind.which()) return false;
    widget_ = std::move(widget);
    settingsChanged();
    return refresh(now);
}

bool LiveWidget::activate(Date now) {
    act(now);
    return refresh(now);
}

std::unique_ptr<LiveWidget> makeLiveWidget(const DockWidget& widget, const LiveWidgetPorts& ports) {
    if (auto model = live::makeTimeWidget(widget, ports)) return model;
    if (auto model = live::makeSystemWidget(widget, ports)) return model;
    return live::makeContentWidget(widget, ports);
}

} // namespace corvane
