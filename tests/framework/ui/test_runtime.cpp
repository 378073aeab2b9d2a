// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/framework/ui/SampleProgram.h"
#include "tests/support/TemporaryFolder.h"

namespace framework::testing {
namespace {

TEST(Runtime, LeadsAProgramFromStartUpToItsLastEvent) {
    const TemporaryFolder folder;
    for (const char* name : {"caf\xE9", "a b", "last"}) folder.Put(name);
    const std::string path = folder.Path();
    const std::string last = std::filesystem::relative(path).string() + "/last";
    const SampleRun run = StartSampleProgram(
        {"-unknown", "\"$(printf '" + path + "/caf\\351')\"", "file://" + path + "/a%20b", "-- " + last});

    EXPECT_EQ(run.ExitCode, 7);
    EXPECT_EQ(run.Output, "startup\nopen\nwindow opens\ndocument " + path + "/caf\xE9\ndocument " + path +
                              "/a b\ndocument " + path + "/last\nwindow closes\nclose\n");
}

TEST(Runtime, WithoutADisplayTheProgramEndsInOrder) {
    const SampleRun run = StartSampleProgram({"-platform", "missing"});
    EXPECT_EQ(run.ExitCode, 1);
    EXPECT_EQ(run.Output, "");
}

}  // namespace
}  // namespace framework::testing
