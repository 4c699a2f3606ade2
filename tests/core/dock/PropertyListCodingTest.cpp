#include "CorvaneCore/dock/PropertyListCoding.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

PlistValue everyKind() {
    return PlistDictionary{
        {"text", "Zoë & co"},
        {"negative", -1},
        {"large", std::int64_t{3849284719}},
        {"real", 0.25},
        {"flag", true},
        {"date", Date{751234567}},
        {"data", Bytes{0, 1, 2, 255}},
        {"empty data", Bytes{}},
        {"uid", PlistUid{7}},
        {"list", PlistArray{1, "two", PlistDictionary{}}},
        {"nested", PlistDictionary{{"inner", PlistDictionary{{"deep", false}}}}},
    };
}

TEST(PropertyListCoding, EveryValueKindSurvivesBinaryAndXml) {
    auto value = everyKind();
    auto binary = binaryPropertyList(value);
    ASSERT_TRUE(binary);
    EXPECT_EQ(std::string(binary->begin(), binary->begin() + 8), "bplist00");
    EXPECT_EQ(parsePropertyList(*binary), value);

    // XML has no UIDs of its own (they become "CF$UID" dictionaries) and dates in whole seconds.
    auto withoutUid = *value.dictionary();
    withoutUid.erase("uid");
    auto xml = xmlPropertyList(withoutUid);
    EXPECT_NE(xml.find("<integer>-1</integer>"), std::string::npos);
    EXPECT_EQ(parsePropertyList(xml), PlistValue(withoutUid));
}

TEST(PropertyListCoding, AnythingElseIsNoPropertyList) {
    EXPECT_FALSE(parsePropertyList(std::string_view("")));
    EXPECT_FALSE(parsePropertyList(std::string_view("{\"json\": true}")));
    EXPECT_FALSE(parsePropertyList(std::string_view("bplist00 but truncated")));
    EXPECT_FALSE(parsePropertyList(std::string_view("<plist><dict><key>a</key></plist>")));
}

} // namespace
} // namespace corvane
