#include "CorvaneCore/bar/FolderStack.hpp"
#include "CorvaneCore/bar/DownloadsTile.hpp"
#include "CorvaneCore/bar/TrashFolders.hpp"
#include "CorvaneCore/support/StandardOrder.hpp"

#include "fakes/FakeMountedVolumes.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

using namespace corvane;
using SortOrder = StackOptions::SortOrder;

namespace {

std::vector<std::string> names(const std::vector<StackItem>& items) {
    std::vector<std::string> result;
    for (const auto& item : items)
        result.push_back(item.name);
    return result;
}

} // namespace

TEST(FolderStack, SortsLikeTheFinder) {
    EXPECT_LT(text::standardCompare("file9.txt", "file10.txt"), 0);
    EXPECT_LT(text::standardCompare("File 2", "file 10"), 0);
    EXPECT_LT(text::standardCompare("apple", "Banana"), 0);
    EXPECT_LT(text::standardCompare("a", "a1"), 0);
    EXPECT_NE(text::standardCompare("x007", "x7"), 0); // equal by value, still a total order
    EXPECT_EQ(text::standardCompare("same", "same"), 0);

    const Date noon{1000}, later{2000};
    std::vector<StackItem> items{
        {"/f/file10.txt", "file10.txt", "Text", noon, false},
        {"/f/file9.txt", "file9.txt", "Text", noon, false},
        {"/f/Zeta", "Zeta", "Folder", later, true},
        {"/f/alpha.png", "alpha.png", "Image", noon, false},
    };
    EXPECT_EQ(names(FolderStack::sorted(items, SortOrder::name)),
              (std::vector<std::string>{"alpha.png", "file9.txt", "file10.txt", "Zeta"}));
    EXPECT_EQ(names(FolderStack::sorted(items, SortOrder::kind)),
              (std::vector<std::string>{"Zeta", "alpha.png", "file9.txt", "file10.txt"}));
    EXPECT_EQ(names(FolderStack::sorted(items, SortOrder::dateAdded)),
              (std::vector<std::string>{"Zeta", "alpha.png", "file9.txt", "file10.txt"}));
}

TEST(FolderStack, ItemsTakeWhatTheListingKnowsAndFallBack) {
    FolderStack::Lister list =
        [](const std::filesystem::path& folder) -> std::optional<std::vector<FolderStack::Entry>> {
        if (folder != "/stack") return std::nullopt;
        return std::vector<FolderStack::Entry>{
            {"/stack/Report.pdf", "Quarterly Report", "PDF document", Date{50}, Date{10}, false},
            {"/stack/photo.JPG", std::nullopt, std::nullopt, std::nullopt, Date{20}, std::nullopt},
            {"/stack/Projects", std::nullopt, std::nullopt, std::nullopt, std::nullopt, true},
        };
    };
    auto items = FolderStack::items("/stack", SortOrder::dateAdded, list);
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0],
              (StackItem{"/stack/Report.pdf", "Quarterly Report", "PDF document", Date{50}, false}));
    EXPECT_EQ(items[1], (StackItem{"/stack/photo.JPG", "photo.JPG", "JPG", Date{20}, false}));
    EXPECT_EQ(items[2].kind, "");
    EXPECT_TRUE(items[2].isDirectory);
    EXPECT_LT(items[2].dateAdded, Date{0});
    EXPECT_EQ(items[0].id(), "/stack/Report.pdf");
    EXPECT_TRUE(FolderStack::items("/elsewhere", SortOrder::name, list).empty());
}

TEST(FolderStack, ListsAFolderWithoutItsHiddenFiles) {
    TemporaryDirectory folder;
    writeText(folder / "b.txt", "b");
    writeText(folder / ".hidden", "h");
    writeText(folder / "A folder" / "inside.txt", "i");
    auto items = FolderStack::items(folder.path(), SortOrder::name);
    EXPECT_EQ(names(items), (std::vector<std::string>{"A folder", "b.txt"}));
    EXPECT_TRUE(items[0].isDirectory);
    EXPECT_EQ(items[1].kind, "txt");
    EXPECT_GT(items[1].dateAdded, Date{0});
    EXPECT_TRUE(FolderStack::items(folder / "missing", SortOrder::name).empty());
}

TEST(StackOptions, JsonUsesRawValuesAndKeepsDefaultsForUnknownOnes) {
    StackOptions options{StackOptions::ViewStyle::list, SortOrder::dateAdded};
    EXPECT_EQ(encodeStackOptions(options),
              nlohmann::json::parse(R"({"viewStyle": "list", "sortOrder": "dateAdded"})"));
    EXPECT_EQ(decodeStackOptions(encodeStackOptions(options)), options);
    EXPECT_EQ(decodeStackOptions(nlohmann::json::parse(R"({"viewStyle": "fan", "sortOrder": 3})")),
              StackOptions{});
}

TEST(DownloadsTile, OneDownloadsItemHoweverItsPathIsWritten) {
    const std::string downloads = "/Users/me/Downloads";
    EXPECT_EQ(DownloadsTile::folder({{"HOME", "/Users/me"}}), downloads);
    for (std::string path : {"/Users/me/Downloads", "/Users/me/Downloads/", "file:///Users/me/Downloads/"})
        EXPECT_TRUE(DownloadsTile::isDownloads(path, downloads)) << path;
    EXPECT_FALSE(DownloadsTile::isDownloads("/Users/me/Downloads/old", downloads));
    EXPECT_FALSE(DownloadsTile::isDownloads(DockItem(URLEntry{.url = downloads}), downloads));

    std::vector<DockItem> others{URLEntry{.url = "https://example.com"}};
    auto added = DownloadsTile::adding(DownloadsTile::adding(others, downloads), downloads);
    ASSERT_EQ(added.size(), 2u);
    EXPECT_EQ(*added[1].file(), (FileEntry{.path = downloads, .isDirectory = true}));
    EXPECT_TRUE(DownloadsTile::contains(added, downloads));

    added.push_back(FileEntry{.path = "file:///Users/me/Downloads/", .isDirectory = true});
    EXPECT_EQ(DownloadsTile::adding(added, downloads).size(), 3u);
    EXPECT_EQ(DownloadsTile::removing(added, downloads), others);
}

TEST(TrashFolders, EveryWritableVolumeAddsItsTrashAndAnyEntryMakesItFull) {
    FakeMountedVolumes volumes;
    volumes.mounted = {{"/", true}, {"/Volumes/Backup", false}, {"/Volumes/Disc", true}};
    auto home = TrashFolders::home({{"HOME", "/Users/me"}});
    EXPECT_EQ(TrashFolders::all(home, volumes, 501),
              (std::vector<std::filesystem::path>{"/Users/me/.Trash", "/Volumes/Backup/.Trashes/501"}));

    TemporaryDirectory root;
    std::filesystem::create_directories(root / ".Trash");
    std::vector<std::filesystem::path> folders{root / ".Trash", root / "missing"};
    EXPECT_FALSE(TrashFolders::isFull({}));
    EXPECT_FALSE(TrashFolders::isFull(folders));
    writeText(root / "missing" / ".DS_Store", "");
    EXPECT_TRUE(TrashFolders::isFull(folders));
}
