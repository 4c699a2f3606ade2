#pragma once

#include "CorvaneCore/platform/WindowList.hpp"

#include <memory>

namespace corvane {

/// Other processes' on-screen windows through `CGWindowListCopyWindowInfo`, and the workspace's
/// notices of a new front application or desktop.
class WindowServerWindowList final : public WindowList {
public:
    WindowServerWindowList();
    ~WindowServerWindowList() override;
    WindowServerWindowList(const WindowServerWindowList&) = delete;
    WindowServerWindowList& operator=(const WindowServerWindowList&) = delete;

    std::vector<Window> windows() override;
    std::optional<std::int32_t> frontApplication() override;
    void onArrangementChange(std::function<void()> handler) override;

private:
    struct Tokens;
    void removeObservers();
    std::unique_ptr<Tokens> observers_;
};

} // namespace corvane
