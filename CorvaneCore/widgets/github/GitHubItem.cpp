#include "CorvaneCore/widgets/github/GitHubItem.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"

namespace corvane {

std::string githubItemsText(const std::vector<GitHubItem>& items) {
    auto array = Json::array();
    for (const auto& item : items)
        array.push_back(Json::object({{"number", item.number},
                                      {"title", item.title},
                                      {"repository", item.repository},
                                      {"url", item.url},
                                      {"checks", caseName(item.checks)},
                                      {"isDraft", item.isDraft},
                                      {"isIssue", item.isIssue},
                                      {"updatedAt", item.updatedAt.sinceReferenceDate}}));
    return prettyJson(array);
}

} // namespace corvane
