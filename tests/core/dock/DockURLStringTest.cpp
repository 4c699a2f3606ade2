#include "CorvaneCore/dock/DockPlistPath.hpp"
#include "CorvaneCore/dock/DockURLString.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(DockURLString, FileURLsEscapeWhatAPathMayNotHoldAndMarkFolders) {
    EXPECT_EQ(DockURLString::fileURLString("/Applications/Google Chrome.app", true),
              "file:///Applications/Google%20Chrome.app/");
    EXPECT_EQ(DockURLString::fileURLString("/Users/sam/Notes #1.txt", false), "file:///Users/sam/Notes%20%231.txt");
    EXPECT_EQ(DockURLString::fileURLString("/Users/sam/Zoë", true), "file:///Users/sam/Zo%C3%AB/");
    EXPECT_EQ(DockURLString::fileURLString("/Users/sam/Downloads/", true), "file:///Users/sam/Downloads/");
    EXPECT_EQ(DockURLString::fileURLString("/a/b&c(1)+d", false), "file:///a/b&c(1)+d");
}

TEST(DockURLString, PathsComeFromFileURLsWithEscapesDecodedAndNoTrailingSlash) {
    EXPECT_EQ(DockURLString::path("file:///Applications/Google%20Chrome.app/"), "/Applications/Google Chrome.app");
    EXPECT_EQ(DockURLString::path("file://localhost/Users/sam/Zo%C3%AB/"), "/Users/sam/Zoë");
    EXPECT_EQ(DockURLString::path("file:///"), "/");
    EXPECT_EQ(DockURLString::path("file:///tmp/a%2Fb"), "/tmp/a/b");
}

TEST(DockURLString, TextThatIsNoFileURLIsTakenAsAPath) {
    EXPECT_EQ(DockURLString::path("/Applications/Safari.app//"), "/Applications/Safari.app");
    // An invalid escape or a bare space makes the text no URL, so it stays as it is.
    EXPECT_EQ(DockURLString::path("file:///tmp/100%"), "file:///tmp/100%");
    EXPECT_EQ(DockURLString::path("file:///tmp/a b/"), "file:///tmp/a b");
    EXPECT_EQ(DockURLString::normalize("/"), "/");
    EXPECT_EQ(DockURLString::normalize("//"), "/");
}

TEST(DockURLString, PathsSurviveTheirOwnURL) {
    for (std::string path : {"/Applications/Safari.app", "/Users/sam/My Files/ünïcødé?#%.pdf", "/"})
        EXPECT_EQ(DockURLString::path(DockURLString::fileURLString(path, false)), path) << path;
}

TEST(DockPlistPath, IsTheDocksFileInTheUsersPreferencesFolder) {
    EXPECT_EQ(DockPlistPath::userDockPlistPath({{"HOME", "/Users/sam"}}),
              "/Users/sam/Library/Preferences/com.apple.dock.plist");
}

} // namespace
} // namespace corvane
