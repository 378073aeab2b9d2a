// SPDX-License-Identifier: GPL-2.0-or-later
// What a row costs in the window when the tools answer at the event loop's next turn: bench_rows [FILES]
// Walks a folder of that many empty files; what the tools say comes from here.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/SearchedWindow.h"
#include "framework/core/threads/Scheduler.h"

namespace marrowbeck {
namespace {

String answer(std::string text) {
    framework::internal::Scheduler::Instance().YieldNow();
    for (char& byte : text) byte = byte == '|' ? '\0' : byte;
    return String(text);
}

int questions = 0;

}  // namespace

// Take the place of those that ask the tools; the linker then leaves the others out.

String Window1::GetAll(const String&) {
    const std::string number = std::to_string(++questions);
    return answer("32|RGB|Copyright 2024 Somebody|A caption, number " + number + "|0230|0|(\n    sea,\n    sky\n)|" +
                  "JPEG image|3000|" + std::to_string(1000 + questions % 3000) + "|sRGB IEC61966-2.1");
}

String Window1::GetEXIF(const String&) {
    return answer("Maker|Model X100|0.004|2.8|" + std::to_string(questions % 200) + "|" +
                  std::to_string(100 + questions % 900));
}

}  // namespace marrowbeck

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    const int files = argc > 1 ? std::atoi(argv[1]) : 10000;
    std::string folder = (fs::temp_directory_path() / "bench-rows.XXXXXX").string();
    if (!mkdtemp(folder.data())) return 1;
    for (int i = 0; i < files; ++i) std::ofstream(folder + "/DSC_" + std::to_string(i) + ".jpg");
    {
        marrowbeck::bench::SearchedWindow window(argv);
        for (int round = 0; round < 3; ++round) {
            const auto search = window.Search(folder, false);
            std::printf("rows=%d seconds=%.4f longest_pause_ms=%.1f microseconds_a_row=%.1f\n", window.Rows(),
                        search.whole / 1e3, search.longestPause, 1e3 * search.whole / window.Rows());
        }
    }
    fs::remove_all(folder);
    return 0;
}
