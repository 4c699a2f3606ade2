#include "CorvaneWidgetsUI/usage/TranscriptSearch.hpp"

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define CORVANE_WIDE_SEARCH 1
#include <immintrin.h>
#endif

#include <simdjson.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace corvane::TranscriptSearch {

namespace {

using Bytes = unsigned char __attribute__((vector_size(16)));

Bytes splat(char c) {
    Bytes bytes;
    std::memset(&bytes, c, sizeof bytes);
    return bytes;
}

Bytes load(const char* at) {
    Bytes bytes;
    std::memcpy(&bytes, at, sizeof bytes);
    return bytes;
}

bool any(Bytes bytes) {
    std::uint64_t halves[2];
    std::memcpy(halves, &bytes, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

/// A general substring search costs more than reading the bytes, so this tests 64 bytes a round
/// for an opening quote, a 'u' after it and a closing quote six on, which JSON rarely puts
/// together (quotes alone are everywhere), and checks only rounds that have one. Vector
/// extensions keep it portable.
const char* findPortable(const char* begin, const char* end) {
    const Bytes quote = splat('"'), u = splat('u');
    auto candidates = [&](const char* at) {
        return Bytes((load(at) == quote) & (load(at + 1) == u) & (load(at + 6) == quote));
    };
    const char* p = begin;
    for (; end - p >= 80; p += 64) {
        if (!any(candidates(p) | candidates(p + 16) | candidates(p + 32) | candidates(p + 48))) continue;
        for (int i = 0; i < 64; ++i)
            if (p[i] == '"' && std::memcmp(p + i, usageKey.data(), usageKey.size()) == 0) return p + i;
    }
    return static_cast<const char*>(::memmem(p, static_cast<std::size_t>(end - p), usageKey.data(), usageKey.size()));
}

#ifdef CORVANE_WIDE_SEARCH
// The same test on wider registers, which yield a bit per byte: each 64-byte block is loaded once
// and its quotes and 'u's become two masks; the key's shape is then a few shifts of those masks,
// with the next block's masks supplying the bits past the block's end. Loading the bytes at +1 and
// +6 instead would read most of them three times.

/// Bits of the quotes and of the 'u's in the 64 bytes at a block's start.
struct Marks {
    std::uint64_t quotes;
    std::uint64_t us;
};

/// Bit i set: a key may start at `at` + i.
inline std::uint64_t candidates(Marks block, Marks next) {
    return block.quotes & (block.us >> 1 | next.us << 63) & (block.quotes >> 6 | next.quotes << 58);
}

/// The key among the candidate positions `mask` marks from `p`, or null.
const char* confirm(const char* p, std::uint64_t mask) {
    for (; mask != 0; mask &= mask - 1) {
        const char* at = p + __builtin_ctzll(mask);
        if (std::memcmp(at, usageKey.data(), usageKey.size()) == 0) return at;
    }
    return nullptr;
}

/// The bits of the bytes equal to `c` among the 64 at `low` and `high`.
__attribute__((target("avx2"))) std::uint64_t bitsAvx2(__m256i low, __m256i high, char c) {
    const __m256i wanted = _mm256_set1_epi8(c);
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(low, wanted))) |
           static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(high, wanted)))) << 32;
}

__attribute__((target("avx2"))) Marks marksAvx2(const char* at) {
    const __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
    const __m256i high = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at + 32));
    return {bitsAvx2(low, high, '"'), bitsAvx2(low, high, 'u')};
}

__attribute__((target("avx512bw"))) Marks marksAvx512(const char* at) {
    const __m512i bytes = _mm512_loadu_si512(at);
    return {_mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8('"')), _mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8('u'))};
}

__attribute__((target("avx2"))) const char* findAvx2(const char* begin, const char* end) {
    const char* p = begin;
    if (end - p >= 128) {
        for (Marks block = marksAvx2(p); end - p >= 128; p += 64) {
            const Marks next = marksAvx2(p + 64);
            if (const auto mask = candidates(block, next))
                if (auto* hit = confirm(p, mask)) return hit;
            block = next;
        }
    }
    return findPortable(p, end);
}

__attribute__((target("avx512bw"))) const char* findAvx512(const char* begin, const char* end) {
    const char* p = begin;
    if (end - p >= 128) {
        for (Marks block = marksAvx512(p); end - p >= 128; p += 64) {
            const Marks next = marksAvx512(p + 64);
            if (const auto mask = candidates(block, next))
                if (auto* hit = confirm(p, mask)) return hit;
            block = next;
        }
    }
    return findPortable(p, end);
}
#endif

using Find = const char* (*)(const char*, const char*);

Find finder(Level level) {
    switch (level) {
#ifdef CORVANE_WIDE_SEARCH
    case Level::avx2: return findAvx2;
    case Level::avx512: return findAvx512;
#endif
    default: return findPortable;
    }
}

} // namespace

const std::vector<Level>& availableLevels() {
    static const std::vector<Level> levels = [] {
        std::vector<Level> found{Level::portable};
#ifdef CORVANE_WIDE_SEARCH
        // simdjson, which decodes the lines, has asked the processor and the system already;
        // asking again through the compiler's built-ins would run the compiler's own probe, a
        // string of CPUID instructions that a virtual machine traps, at every start of the tool.
        const std::string& chosen = simdjson::get_active_implementation()->name();
        if (chosen == "haswell" || chosen == "icelake") found.push_back(Level::avx2);
        if (chosen == "icelake") found.push_back(Level::avx512);
#endif
        return found;
    }();
    return levels;
}

const char* findUsageKey(const char* begin, const char* end) {
    static const Find best = finder(availableLevels().back());
    return best(begin, end);
}

const char* findUsageKey(const char* begin, const char* end, Level level) { return finder(level)(begin, end); }

const char* lastLineFeed(const char* begin, const char* end) {
    // 64 bytes a step: a line's start is looked up from a key that may lie kilobytes into it.
    const Bytes feed = splat('\n');
    while (end - begin >= 64) {
        if (any((load(end - 16) == feed) | (load(end - 32) == feed) | (load(end - 48) == feed) | (load(end - 64) == feed)))
            break;
        end -= 64;
    }
    while (end - begin >= 16) {
        if (any(load(end - 16) == feed)) break;
        end -= 16;
    }
    while (end > begin)
        if (*--end == '\n') return end;
    return nullptr;
}

} // namespace corvane::TranscriptSearch
