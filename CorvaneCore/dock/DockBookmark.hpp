#pragma once

#include "CorvaneCore/support/Base64.hpp"

#include <optional>
#include <string>

namespace corvane {

/// The path held by the bookmark data the Dock keeps beside, or instead of, a tile's URL: the
/// "book" form of current systems (tile-data "book") and the older alias record
/// (file-data "_CFURLAliasData"). Some tiles carry nothing else, so the path is all we can
/// learn from them.
namespace DockBookmark {

/// The absolute path, or none when the data is neither form or holds no path.
std::optional<std::string> path(const Bytes& data);

} // namespace DockBookmark

} // namespace corvane
