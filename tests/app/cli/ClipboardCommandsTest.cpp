#include "CorvaneStorage/widgets/clipboard/ClipboardHistoryFile.hpp"
#include "app/cli/ToolFixtures.hpp"
#include "platform/posix/FileSecretStore.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

/// An installation with the sealed history file the tool works on, opened as the app opens it.
struct ClipboardInstallation : Installation {
    FileSecretStore secrets{data.path()};
    ClipboardHistoryFile file{data / "clipboard.json.enc", secrets};
};

ClipboardItem text(std::string value, bool pinned = false) {
    return ClipboardItem{.id = Uuid::generate(), .isPinned = pinned, .text = std::move(value)};
}

} // namespace

TEST(ClipboardCommands, ListClearAndForgetWorkOnTheSealedHistory) {
    ClipboardInstallation here;
    EXPECT_EQ(here.run({"clipboard", "list"}).out, "Nothing copied yet.\n");
    auto secret = text("Tr0ub4dor&3xyz");
    secret.isSensitive = true;
    here.file.write({text("kept", true), text("line one\nline two"), secret});

    auto listed = here.run({"clipboard", "list"});
    ASSERT_EQ(listed.status, 0) << listed.err;
    EXPECT_EQ(listed.out, "* kept\n  line one line two\n  \u2022\u2022\u2022\u2022\u2022\u2022\u2022\u2022\u2022\u2022\u2022"
                          "\u2022\u2022\u2022\n");
    auto json = here.run({"clipboard", "list", "--json"});
    EXPECT_NE(json.out.find("\"text\": \"line one\\nline two\""), std::string::npos);

    auto cleared = here.run({"clipboard", "clear"});
    EXPECT_EQ(cleared.out, "Removed 2 items; kept 1 pinned item.\n");
    EXPECT_EQ(here.file.read()->size(), 1u);

    EXPECT_EQ(here.run({"clipboard", "forget"}).out, "Forgot the clipboard history.\n");
    EXPECT_FALSE(std::filesystem::exists(here.file.url()));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(here.data.path()), {}), 0);
}

TEST(ClipboardCommands, ADamagedHistoryIsOneClearErrorAndStaysAsItWas) {
    ClipboardInstallation here;
    here.file.write({text("a")});
    auto sealed = readText(here.file.url());
    writeText(here.file.url(), sealed.substr(0, 28));
    auto result = here.run({"clipboard", "clear"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "corvane: Failed to read the encrypted clipboard because the file is incomplete\n");
    EXPECT_EQ(readText(here.file.url()), sealed.substr(0, 28));

    sealed[20] = static_cast<char>(sealed[20] ^ 0x40);
    writeText(here.file.url(), sealed);
    result = here.run({"clipboard", "list"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "corvane: Failed to read the encrypted clipboard because it does not open with its key\n");
}
