#include "CorvaneApp/preferences/InterfaceLanguage.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(InterfaceLanguage, TheFirstPreferredTagGivesItsLanguageAndScript) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> cases = {
        {"en", "en"},
        {"de-CH", "de"},
        {"fr_CA", "fr"},
        {"PT-br", "pt"},
        {"zh-Hant-TW", "zh-Hant"},
        {"zh_hans", "zh-Hans"},
        {"yue-Hant-HK", "yue-Hant"},
        {"sr-Latn", "sr-Latn"},
        {"es-419", "es"},
        {"", std::nullopt},
        {"e", std::nullopt},
        {"english", std::nullopt},
        {"1234", std::nullopt},
        {"-de", std::nullopt},
    };
    for (const auto& [tag, setting] : cases) EXPECT_EQ(InterfaceLanguage::fromTag(tag), setting) << tag;

    EXPECT_EQ(InterfaceLanguage::fromPreferredLanguages({"nb-NO", "en-US"}), "nb");
    EXPECT_EQ(InterfaceLanguage::fromPreferredLanguages({}), std::nullopt);
    EXPECT_EQ(InterfaceLanguage::preferredLanguages("de"), std::vector<std::string>{"de"});
    EXPECT_TRUE(InterfaceLanguage::preferredLanguages(std::nullopt).empty());
}
