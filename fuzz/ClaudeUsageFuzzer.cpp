// The coding assistant's bytes: a transcript line and a status-line payload, both read from the
// same input. Neither decoder may throw; a line gives an entry only with an id and a real moment,
// and the limits of a payload come back unchanged from the text the usage command prints.

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsageLimits.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageSource.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <cmath>
#include <stdexcept>

using namespace corvane;

namespace {

void checkEntry(std::string_view line) {
    const std::optional<std::string> project = "atlas";
    auto entry = ClaudeUsageSource::entry(line, project);
    if (!entry) return;
    FUZZ_CHECK(!entry->id.empty());
    FUZZ_CHECK(entry->project == project);
    FUZZ_CHECK(std::isfinite(entry->timestamp.sinceReferenceDate));
    FUZZ_CHECK(entry->inputTokens >= 0 && entry->outputTokens >= 0);
    FUZZ_CHECK(entry->cacheCreationTokens >= 0 && entry->cacheReadTokens >= 0);
    try {
        FUZZ_CHECK(entry->allTokens() >= entry->tokens());
    } catch (const std::overflow_error&) {
    }
    FUZZ_CHECK(ClaudeUsageSource::entry(line, std::nullopt)->project == std::nullopt);
}

void checkWindow(const std::optional<ClaudeUsageWindow>& window, Date readAt) {
    if (!window) return;
    FUZZ_CHECK(std::isfinite(window->usedPercentage));
    if (window->resetsAt) {
        FUZZ_CHECK(std::isfinite(window->resetsAt->sinceReferenceDate));
        ClaudeUsageLimitsFormat::untilReset(window->resetsAt, readAt);
    }
}

void checkLimits(std::string_view payload) {
    const Date readAt{760000000};
    auto limits = ClaudeUsageLimitsFormat::limits(payload, readAt);
    if (!limits) return;
    FUZZ_CHECK(!limits->isEmpty());
    FUZZ_CHECK(limits->readAt == readAt);
    checkWindow(limits->fiveHour, readAt);
    checkWindow(limits->sevenDay, readAt);
    for (auto shows : {ClaudeUsageShows::fiveHourLimit, ClaudeUsageShows::weeklyLimit, ClaudeUsageShows::tokens})
        ClaudeUsageLimitsFormat::shownWindow(limits, shows, readAt);

    auto text = prettyJson(encodeClaudeUsageLimits(*limits));
    FUZZ_CHECK(decodeClaudeUsageLimits(JsonReader(parseJson(text))) == *limits);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto text = fuzz::text(data, size);
    checkEntry(text);
    checkLimits(text);
    return 0;
}
