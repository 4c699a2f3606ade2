#pragma once

#include <string_view>

namespace corvane::text {

/// The Finder's ordering of names: letter case is ignored (ties broken by it, so the order is
/// total), and runs of digits compare by value, so "file9" comes before "file10". Negative,
/// zero or positive, like `strcmp`.
int standardCompare(std::string_view a, std::string_view b);

} // namespace corvane::text
