#include "app/cli/ToolFixtures.hpp"

#include <gtest/gtest.h>

using namespace corvane;

// Cairo (with the two dozen libraries it needs) and libcrypto are opened by the commands that
// draw or seal; linked, they would be loaded and relocated in every run of the tool. The drawing
// and clipboard commands' own tests show that opening them later works.
TEST(ToolStartUp, TheToolDoesNotLoadCairoOrLibcryptoBeforeACommandNeedsThem) {
    // glibc's loader lists the libraries a program starts with, and stops there.
    TemporaryDirectory home;
    auto result = runProgram(CORVANE_TOOL, {"--data-dir", home.path().string(), "list"},
                             {"LD_TRACE_LOADED_OBJECTS=1", "HOME=" + home.path().string()});
    if (result.out.find("libc.so") == std::string::npos) GTEST_SKIP() << "no loader here that lists libraries";
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.find("libcairo"), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("libcrypto"), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("libpng"), std::string::npos) << result.out;
}
