#include <gtest/gtest.h>

#include <filesystem>

#include "tests/framework/ui/SampleProgram.h"

namespace framework::testing {
namespace {

TEST(Runtime, LeadsAProgramFromStartUpToItsLastEvent) {
    const SampleRun run =
        StartSampleProgram({"-unknown", "\"$(printf '/tmp/caf\\351')\"", "file:///tmp/a%20b", "-- ./last"});

    EXPECT_EQ(run.ExitCode, 7);
    EXPECT_EQ(run.Output, "startup\nopen\nwindow opens\ndocument /tmp/caf\xE9\ndocument /tmp/a b\ndocument " +
                              std::filesystem::current_path().string() + "/last\nwindow closes\nclose\n");
}

TEST(Runtime, AnOpenEventThatQuitsOpensNothingMore) {
    const SampleRun run = StartSampleProgram({"/tmp", kQuitAtOnceFlag});
    EXPECT_EQ(run.ExitCode, 3);
    EXPECT_EQ(run.Output, "startup\nopen\nclose\n");
}

TEST(Runtime, TheLossOfTheDisplayIsAnOrderlyEnd) {
    const SampleRun run = StartSampleProgram({"'/tmp/display lost'"});
    EXPECT_EQ(run.ExitCode, 1);
    EXPECT_EQ(run.Output, "startup\nopen\nwindow opens\ndocument /tmp/display lost\nwindow closes\nclose\n");
}

}  // namespace
}  // namespace framework::testing
