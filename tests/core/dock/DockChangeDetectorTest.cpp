#include "CorvaneCore/dock/DockChangeDetector.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

DockItem app(std::string path, std::optional<std::string> name = std::nullopt) {
    return AppEntry{std::move(path), std::nullopt, std::move(name), std::nullopt};
}
DockItem folder(std::string path) { return FileEntry{std::move(path), std::nullopt, true, std::nullopt, std::nullopt}; }
DockItem file(std::string path) { return FileEntry{std::move(path), std::nullopt, false, std::nullopt, std::nullopt}; }
DockItem link(std::string url) { return URLEntry{std::move(url), std::nullopt, std::nullopt}; }

DockSnapshot snapshot(std::vector<DockItem> apps, std::vector<DockItem> others = {}) {
    return DockSnapshot{std::move(apps), std::move(others), {}};
}

TEST(DockChangeDetector, LabelsBadgesAndStoredTilesDoNotCount) {
    auto before = snapshot({app("/Applications/Mail.app", "Mail")}, {folder("/Users/sam/Downloads")});
    FileEntry badged{"/Users/sam/Downloads/", "DL", true, Bytes{1}, "#EF4444"};
    auto after = snapshot({AppEntry{"/Applications/Mail.app/", "com.apple.mail", "Post", Bytes{9}}}, {badged});
    EXPECT_EQ(DockChangeDetector::diff(before, after), DockChangeDetector::noChange);
    EXPECT_FALSE(DockChangeDetector::diff(before, after).hasChanges());
}

TEST(DockChangeDetector, ReportsAddedRemovedAndReorderedItems) {
    auto before = snapshot({app("/A.app"), app("/B.app"), app("/C.app")}, {link("https://x.example")});
    auto after = snapshot({app("/C.app"), app("/A.app"), app("/D.app")}, {link("https://x.example")});
    auto report = DockChangeDetector::diff(before, after);
    EXPECT_EQ(report.added, std::vector<DockItem>{app("/D.app")});
    EXPECT_EQ(report.removed, std::vector<DockItem>{app("/B.app")});
    EXPECT_TRUE(report.reordered);

    auto onlyAdded = DockChangeDetector::diff(before, snapshot({app("/A.app"), app("/B.app"), app("/C.app"), app("/D.app")},
                                                               {link("https://x.example")}));
    EXPECT_FALSE(onlyAdded.reordered);
    EXPECT_EQ(onlyAdded.added.size(), 1u);
}

TEST(DockChangeDetector, SectionAndKindKeepLikePathsApart) {
    // The same folder moved from the documents into the applications section.
    auto report = DockChangeDetector::diff(snapshot({}, {folder("/Users/sam/Work")}), snapshot({folder("/Users/sam/Work")}));
    EXPECT_EQ(report.added.size(), 1u);
    EXPECT_EQ(report.removed.size(), 1u);
    // A link whose text is a path is not that file.
    EXPECT_TRUE(DockChangeDetector::diff(snapshot({}, {file("/tmp/x")}), snapshot({}, {link("/tmp/x")})).hasChanges());
}

TEST(DockChangeDetector, AFileAmongTheAppsMatchesTheAppTheDockReadsBack) {
    EXPECT_FALSE(DockChangeDetector::diff(snapshot({file("/tmp/tool")}), snapshot({app("/tmp/tool")})).hasChanges());
    EXPECT_FALSE(DockChangeDetector::diff(snapshot({}, {app("/tmp/tool")}), snapshot({}, {file("/tmp/tool")})).hasChanges());
}

TEST(DockChangeDetector, EachSpacerIsItsOwnTile) {
    auto one = snapshot({app("/A.app"), SpacerVariant::small, app("/B.app")});
    auto two = snapshot({app("/A.app"), SpacerVariant::small, SpacerVariant::small, app("/B.app")});
    auto report = DockChangeDetector::diff(one, two);
    EXPECT_EQ(report.added, std::vector<DockItem>{SpacerVariant::small});
    EXPECT_TRUE(report.removed.empty());
    EXPECT_FALSE(report.reordered);

    auto moved = DockChangeDetector::diff(one, snapshot({SpacerVariant::small, app("/A.app"), app("/B.app")}));
    EXPECT_TRUE(moved.reordered);
    EXPECT_TRUE(moved.added.empty());
}

} // namespace
} // namespace corvane
