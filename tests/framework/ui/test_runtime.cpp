#include <gtest/gtest.h>

#include <filesystem>

#include "tests/framework/ui/SampleProgram.h"

namespace framework::testing {
namespace {

TEST(Runtime, LeadsAProgramFromStartUpToItsLastEvent) {
    const SampleRun run =
        StartSampleProgram({"-unknown", "\"$(printf '/tmp/caf\\351')\"", "file:///tmp/a%20b", "-- ./last"});

    EXPECT_EQ(run.ExitCode, 7);
    EXPECT_EQ(run.Output, "startup\nopen\ndocument /tmp/caf\xE9\ndocument /tmp/a b\ndocument " +
                              std::filesystem::current_path().string() + "/last\nwindow closes\nclose\n");
}

}  // namespace
}  // namespace framework::testing
