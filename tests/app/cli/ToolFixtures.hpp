#pragma once

// The real tool, run end to end on throw-away folders.

#include "fakes/RunProgram.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace corvane {

/// A data folder of its own, which is also the tool's home.
struct Installation {
    TemporaryDirectory data;

    ProgramResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--data-dir", data.path().string()});
        return runProgram(CORVANE_TOOL, arguments, {"HOME=" + data.path().string()});
    }
};

/// A data folder found through the environment, the way the app finds its own, rather than
/// named by --data-dir.
class EnvironmentTool : public ::testing::Test {
protected:
    ProgramResult run(std::vector<std::string> arguments) {
        return runProgram(
            CORVANE_TOOL, arguments,
            {"CORVANE_APP_SUPPORT_DIR=" + data.path().string(), "HOME=" + data.path().string(), "TZ=UTC0"});
    }
    /// The output of a run that must succeed and print nothing on stderr.
    std::string ok(std::vector<std::string> arguments) {
        auto result = run(std::move(arguments));
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return result.out;
    }

    TemporaryDirectory data;
};

inline std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

/// A data folder and a copy of the sample Dock preferences file, which every run works on.
class SampleDockTool : public ::testing::Test {
protected:
    SampleDockTool() {
        std::filesystem::copy_file(std::filesystem::path(CORVANE_TEST_DATA) / "../../samples/com.apple.dock.plist",
                                   dir / "dock.plist");
    }

    ProgramResult run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"--data-dir", (dir / "data").string(), "--dock-plist", (dir / "dock.plist").string()});
        return runProgram(CORVANE_TOOL, arguments, {"HOME=" + dir.path().string()});
    }

    /// The output of a run that must succeed.
    std::string ok(std::vector<std::string> arguments) {
        auto result = run(std::move(arguments));
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }

    TemporaryDirectory dir;
};

} // namespace corvane
