#pragma once

// Apple property lists as bytes. Only this module's .cpp sees the property-list library.

#include "CorvaneCore/dock/PlistValue.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// Parses an XML or a binary property list (told apart by the binary header); none when the
/// bytes are neither.
std::optional<PlistValue> parsePropertyList(std::string_view bytes);
std::optional<PlistValue> parsePropertyList(const Bytes& bytes);

/// The XML form, as the Dock's preferences file is written off macOS.
std::string xmlPropertyList(const PlistValue& value);
/// The binary form ("bplist00"), as a tile is kept inside a workspace. None when the library
/// cannot serialise the value.
std::optional<Bytes> binaryPropertyList(const PlistValue& value);

} // namespace corvane
