// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <vector>

namespace framework::testing {

/// Has the test program run as a small program of its own, which writes a line for each thing that happens to it.
inline constexpr const char* kSampleProgramFlag = "--sample-program";

int RunSampleProgram(int argc, char** argv);

/// What a started sample program wrote, and its exit code; -1 where a signal ended it.
struct SampleRun {
    std::string Output;
    int ExitCode = -1;
};
SampleRun StartSampleProgram(const std::vector<std::string>& arguments);

}  // namespace framework::testing
