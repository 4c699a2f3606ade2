#pragma once

// The byte searches the transcript scanner runs over nearly every byte it reads: where a line
// mentions usage, and where a line begins. A scan spends more time here than in decoding, so the
// key search uses the widest registers the processor has.

#include <string_view>
#include <vector>

namespace corvane::TranscriptSearch {

/// The key a line needs before it is decoded.
inline constexpr std::string_view usageKey = "\"usage\"";

/// Instruction sets the key search can run on; `portable` (SSE2, NEON) runs everywhere.
enum class Level { portable, avx2, avx512 };

/// The levels this processor runs, `portable` first and the best last.
const std::vector<Level>& availableLevels();

/// The first `usageKey` in [begin, end), or null, on the best level this processor has.
const char* findUsageKey(const char* begin, const char* end);
/// The same on `level`, which must be one of `availableLevels()`.
const char* findUsageKey(const char* begin, const char* end, Level level);

/// The last line feed in [begin, end), or null.
const char* lastLineFeed(const char* begin, const char* end);

} // namespace corvane::TranscriptSearch
