#pragma once

#include "CorvaneCore/platform/DesktopServer.hpp"

#include "platform/macos/SkyLightSymbols.hpp"

namespace corvane {

/// Desktops through the private window-server framework, loaded by path at run time. Every
/// symbol may be missing on some macOS release; what needs a missing one answers empty or
/// false. Written without a macOS compiler at hand: keep it thin.
class SkyLightDesktopServer final : public DesktopServer {
public:
    SkyLightDesktopServer() : symbols_(SkyLightSymbols::load()) {}

    std::vector<Display> displays() override;
    std::optional<std::uint64_t> activeSpace() override;
    bool canAssign() const override;
    bool assign(std::int32_t pid, std::optional<std::uint64_t> space) override;

private:
    SkyLightSymbols symbols_;
};

} // namespace corvane
