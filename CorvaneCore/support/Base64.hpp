#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

using Bytes = std::vector<std::uint8_t>;

std::string base64Encode(const Bytes& bytes);
/// Standard alphabet with padding; white space and anything malformed give none.
std::optional<Bytes> base64Decode(std::string_view text);

} // namespace corvane
