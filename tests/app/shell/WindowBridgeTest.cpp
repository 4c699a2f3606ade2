// What the application's window says to its pages: values reach a script only as JSON.

#include "CorvaneApp/shell/WindowBridge.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace corvane {
namespace {

/// The argument of the one call a script makes, read back as JSON.
nlohmann::json argument(const std::string& script, std::string_view function) {
    auto call = "window.corvane?." + std::string(function) + "(";
    EXPECT_TRUE(script.starts_with(call)) << script;
    EXPECT_TRUE(script.ends_with(");")) << script;
    return nlohmann::json::parse(script.substr(call.size(), script.size() - call.size() - 2));
}

TEST(WindowBridge, NamesAndPathsReachThePageAsDataNeverAsCode) {
    EXPECT_EQ(WindowBridge::openPageScript("widgets"), "window.corvane?.openPage(\"widgets\");");
    EXPECT_EQ(argument(WindowBridge::openPageScript("x\"); alert(1); (\""), "openPage"), "x\"); alert(1); (\"");

    std::vector<std::string> dropped = {"/Applications/Safari.app", "/Users/me/it's \"quoted\"\n</script>.txt",
                                        "/Users/me/Ünïcode ✓"};
    EXPECT_EQ(argument(WindowBridge::droppedPathsScript(dropped), "droppedPaths"), nlohmann::json(dropped));
    EXPECT_EQ(WindowBridge::droppedPathsScript({}), "window.corvane?.droppedPaths([]);");
    // A name that is not UTF-8 still makes a script, with the broken bytes replaced.
    EXPECT_NO_THROW(argument(WindowBridge::droppedPathsScript({"/Users/me/\xff\xfe"}), "droppedPaths"));
}

TEST(WindowBridge, StartAddressAndSystemSettingsPanes) {
    EXPECT_EQ(WindowBridge::startAddress("backups"), "corvane://app/index.html#page=backups");
    EXPECT_EQ(WindowBridge::startAddress(""), "corvane://app/index.html");
    EXPECT_EQ(WindowBridge::startAddress("widgets/6F1C"), "corvane://app/index.html#page=widgets&item=6F1C");

    EXPECT_EQ(WindowBridge::systemSettingsAddress("focus"),
              "x-apple.systempreferences:com.apple.preference.security?Privacy_Focus");
    EXPECT_EQ(WindowBridge::systemSettingsAddress("accessibility"),
              "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
    EXPECT_TRUE(WindowBridge::systemSettingsAddress("notifications")->starts_with("x-apple.systempreferences:"));
    EXPECT_EQ(WindowBridge::systemSettingsAddress("camera"), std::nullopt);
    EXPECT_EQ(nlohmann::json::parse(WindowBridge::error(400, "no such pane").body),
              (nlohmann::json{{"error", "no such pane"}}));
}

} // namespace
} // namespace corvane
