#pragma once

// What every fuzz target shares: the input as text, and a check that stops the run with a
// message when a property of a decoder does not hold (libFuzzer then keeps the input).

#include "CorvaneCore/support/DecodingError.hpp"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace corvane::fuzz {

inline std::string_view text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

[[noreturn]] inline void fail(const char* what, const char* file, int line) {
    std::fprintf(stderr, "fuzz check failed at %s:%d: %s\n", file, line, what);
    std::abort();
}

} // namespace corvane::fuzz

#define FUZZ_CHECK(condition)                                                                                   \
    do {                                                                                                        \
        if (!(condition)) ::corvane::fuzz::fail(#condition, __FILE__, __LINE__);                                \
    } while (false)

namespace corvane::fuzz {

/// Decodes `text`; when that succeeds, what is encoded again decodes to the same value.
template <typename Decode, typename Encode> void roundTrip(std::string_view text, Decode decode, Encode encode) {
    decltype(decode(text)) value;
    try {
        value = decode(text);
    } catch (const DecodingError&) {
        return;
    }
    FUZZ_CHECK(decode(encode(value)) == value);
}

} // namespace corvane::fuzz
