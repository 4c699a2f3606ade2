// What `gh api graphql` prints, read as an items reply, a contributions reply and for its error,
// all from the same input. No exception whatever the bytes; a reply gives either its values or an
// error, never both; the contribution calendar is sound for everything the widget draws from it;
// and what was read writes out whole.

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/github/GitHubReply.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <cmath>

using namespace corvane;

namespace {

void checkItems(std::string_view reply, const std::optional<std::string>& error) {
    auto read = GitHubReply::items(reply);
    FUZZ_CHECK(!read.error || read.items.empty());
    FUZZ_CHECK(!error || read.error == error);
    for (const auto& item : read.items) {
        FUZZ_CHECK(std::isfinite(item.updatedAt.sinceReferenceDate));
        FUZZ_CHECK(!item.isIssue || item.checks == GitHubChecks::none);
    }
    auto written = parseJson(githubItemsText(read.items));
    FUZZ_CHECK(written.is_array() && written.size() == read.items.size());
    for (std::size_t i = 0; i < read.items.size(); ++i) {
        FUZZ_CHECK(written[i]["number"].get<std::int64_t>() == read.items[i].number);
        FUZZ_CHECK(written[i]["repository"] == read.items[i].repository);
        FUZZ_CHECK(written[i]["title"] == read.items[i].title);
    }
}

void checkContributions(std::string_view reply, const std::optional<std::string>& error) {
    auto read = GitHubReply::contributions(reply);
    FUZZ_CHECK(read.contributions.has_value() != read.error.has_value());
    FUZZ_CHECK(!error || read.error == error);
    if (!read.contributions) return;
    const auto& calendar = *read.contributions;
    FUZZ_CHECK(calendar.total >= 0);
    for (const auto& day : calendar.days) FUZZ_CHECK(day.count >= 0);
    FUZZ_CHECK(calendar.steps.first <= calendar.steps.second && calendar.steps.second <= calendar.steps.third);
    for (const auto& day : calendar.days) {
        auto shade = calendar.shade(day.count);
        FUZZ_CHECK(shade >= 0 && shade <= 4);
        FUZZ_CHECK((shade == 0) == (day.count == 0));
    }
    auto columns = calendar.columns(53);
    FUZZ_CHECK(columns.size() <= 53);
    auto streak = calendar.streak();
    FUZZ_CHECK(streak >= 0 && static_cast<std::size_t>(streak) <= calendar.days.size());
    if (auto busiest = calendar.busiest()) FUZZ_CHECK(busiest->count > 0);

    auto written = parseJson(githubContributionsText(calendar));
    FUZZ_CHECK(written["total"].get<std::int64_t>() == calendar.total);
    FUZZ_CHECK(written["days"].size() == calendar.days.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto text = fuzz::text(data, size);
    auto error = GitHubReply::errorMessage(text);
    FUZZ_CHECK(!error || !error->empty());
    checkItems(text, error);
    checkContributions(text, error);
    return 0;
}
