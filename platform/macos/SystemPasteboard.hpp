#pragma once

#include "CorvaneCore/platform/Pasteboard.hpp"

#include <optional>
#include <string>

namespace corvane {

/// The general pasteboard through AppKit. Plain C++ on the outside; the Objective-C++ stays in
/// the implementation.
class SystemPasteboard final : public Pasteboard {
public:
    std::int64_t changeCount() override;
    std::vector<std::string> types() override;
    std::optional<std::string> fileURL() override;
    std::optional<Bytes> imageData() override;
    std::optional<std::string> text() override;
    void writeText(const std::string& text, bool concealed) override;
    void writeImage(const Bytes& data) override;
    void writeFile(const std::string& fileURL) override;

    /// The application in front, which a copy is taken to come from. Main thread.
    struct Frontmost {
        std::optional<std::string> bundleIdentifier;
        std::optional<std::string> name;
    };
    static Frontmost frontmostApplication();
};

} // namespace corvane
