#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {

/// The URL text the Dock keeps in "_CFURLString", and the paths behind it.
namespace DockURLString {

/// The value written as "_CFURLStringType": an absolute URL string.
inline constexpr std::int64_t urlStringType = 15;

/// The absolute string of the file URL for `path`; a directory's URL ends in "/".
std::string fileURLString(std::string_view path, bool isDirectory);

/// The file-system path of a "file://" URL (percent-escapes decoded); any other text, or a
/// "file://" text that is not a valid URL, is taken as a path as it is. Normalised.
std::string path(std::string_view urlString);

/// Drops trailing slashes while at least two characters remain, so "/" stays "/".
std::string normalize(std::string_view path);

} // namespace DockURLString

} // namespace corvane
