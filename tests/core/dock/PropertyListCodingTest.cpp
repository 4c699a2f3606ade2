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

TEST(PropertyListCoding, DatesBeyondWhatTheLibraryCarriesArePinnedToItsRange) {
    auto written = [](double seconds) {
        auto value = parsePropertyList(*binaryPropertyList(PlistDictionary{{"d", Date{seconds}}}));
        return std::get<Date>(value->dictionary()->at("d").storage).sinceReferenceDate;
    };
    EXPECT_EQ(written(1e12), 2147483647.0);
    EXPECT_EQ(written(-1e12), -2147483648.0);
    EXPECT_EQ(written(751234567.25), 751234567.25);
}

// The library aborts the process on a string holding NUL, and passes on whatever bytes a file
// holds; what comes out must be real text that survives being written again.
TEST(PropertyListCoding, TextIsReadAsValidUtf8WithoutNulAndNeverAbortsTheProcess) {
    const std::string xml = std::string("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>a</key><string>x") +
                            '\0' + "y</string></dict></plist>";
    auto fromXml = parsePropertyList(xml);
    ASSERT_TRUE(fromXml);
    // What follows the NUL is the library's business; the NUL itself never comes through.
    const auto* text = fromXml->dictionary()->at("a").string();
    ASSERT_TRUE(text);
    EXPECT_TRUE(text->starts_with("x\uFFFD")) << *text;
    EXPECT_EQ(text->find('\0'), std::string::npos);

    // One dictionary: the UTF-16 key "a", NUL, "é" and the ASCII string "x" with a stray 0xD2.
    const std::string binary("bplist00\xD1\x01\x02"
                             "\x63\x00\x61\x00\x00\x00\xE9"
                             "\x52\x78\xD2"
                             "\x08\x0B\x12"
                             "\x00\x00\x00\x00\x00\x00\x01\x01"
                             "\x00\x00\x00\x00\x00\x00\x00\x03"
                             "\x00\x00\x00\x00\x00\x00\x00\x00"
                             "\x00\x00\x00\x00\x00\x00\x00\x15",
                             56);
    auto fromBinary = parsePropertyList(binary);
    ASSERT_TRUE(fromBinary);
    const PlistValue expected = PlistDictionary{{"a\uFFFD\u00E9", "x\uFFFD"}};
    EXPECT_EQ(*fromBinary, expected);
    EXPECT_EQ(parsePropertyList(*binaryPropertyList(*fromBinary)), expected);
    EXPECT_EQ(parsePropertyList(xmlPropertyList(*fromBinary)), expected);
}

} // namespace
} // namespace corvane
