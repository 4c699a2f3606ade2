#pragma once

#include "CorvaneCore/support/Base64.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The system's general pasteboard. Used from one thread at a time (the clipboard's own work
/// queue), never concurrently.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Grows whenever anyone writes to the pasteboard, this process included.
    virtual std::int64_t changeCount() = 0;
    /// The type identifiers of the current content ("public.utf8-plain-text", …).
    virtual std::vector<std::string> types() = 0;
    /// The first file URL on the pasteboard as a "file://" string; none when there is none.
    virtual std::optional<std::string> fileURL() = 0;
    /// Image data (PNG or TIFF as the pasteboard holds it); none when there is none.
    virtual std::optional<Bytes> imageData() = 0;
    /// The plain text; none when there is none.
    virtual std::optional<std::string> text() = 0;

    /// Each write replaces the whole content. A concealed text carries the marker that tells other
    /// clipboard tools not to keep it.
    virtual void writeText(const std::string& text, bool concealed) = 0;
    virtual void writeImage(const Bytes& data) = 0;
    virtual void writeFile(const std::string& fileURL) = 0;
};

} // namespace corvane
