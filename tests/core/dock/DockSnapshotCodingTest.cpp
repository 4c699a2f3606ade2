#include "CorvaneCore/dock/DockSnapshotCoding.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(DockSnapshotCoding, RoundTripsWithTheDateAsSecondsSince2001) {
    DockSnapshot snapshot{{AppEntry{"/Applications/Mail.app", "com.apple.mail", "Mail", Bytes{1, 2, 3}},
                           SpacerVariant::small},
                          {FileEntry{"/Users/sam/Downloads", std::nullopt, true, std::nullopt, std::nullopt},
                           URLEntry{"https://example.org", "Example", std::nullopt}},
                          Date{751234567.25}};
    auto text = dockSnapshotText(snapshot);
    auto json = parseJson(text);
    EXPECT_EQ(json["capturedAt"], 751234567.25);
    EXPECT_EQ(json["apps"][0]["app"]["_0"]["tile"], "AQID");
    EXPECT_EQ(json["apps"][1]["spacer"]["_0"], "small-spacer-tile");
    EXPECT_EQ(dockSnapshotFromText(text), snapshot);
}

TEST(DockSnapshotCoding, OthersMayBeMissingButAppsAndTheDateMayNot) {
    auto snapshot = dockSnapshotFromText(R"({"apps": [], "capturedAt": 10})");
    EXPECT_TRUE(snapshot.others.empty());
    EXPECT_EQ(snapshot.capturedAt, Date{10});
    EXPECT_THROW(dockSnapshotFromText(R"({"others": [], "capturedAt": 10})"), DecodingError);
    EXPECT_THROW(dockSnapshotFromText(R"({"apps": [], "others": []})"), DecodingError);
    EXPECT_THROW(dockSnapshotFromText(R"({"apps": [], "capturedAt": "2024-01-01"})"), DecodingError);
}

} // namespace
} // namespace corvane
