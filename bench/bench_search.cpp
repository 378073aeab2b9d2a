// SPDX-License-Identifier: GPL-2.0-or-later
// How fast folders become rows in the real window with the real tools, and whether the window stays alive meanwhile:
// bench_search [--walk] [--again] --folder FOLDER...
// Searches one folder after the other with all that is below it, or with --walk only what lies in it. --again also
// sorts by a click, searches once more over the full list and empties the list. One line of figures for each.

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "bench/SearchedWindow.h"
#include "catalogue/RowRecord.h"

namespace {

using namespace marrowbeck::bench;

/// Resident memory in bytes, from the second field of /proc/self/statm.
long residentBytes() {
    std::ifstream file("/proc/self/statm");
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

void report(const char* what, int rows, const Duration& duration) {
    std::printf("%s rows=%d seconds=%.4f longest_pause_ms=%.1f", what, rows, duration.whole / 1e3,
                duration.longestPause);
}

}  // namespace

int main(int argc, char** argv) {
    bool walk = false;
    bool again = false;
    int first = 1;
    for (; first < argc && std::strcmp(argv[first], "--folder") != 0; ++first) {
        walk = walk || std::strcmp(argv[first], "--walk") == 0;
        again = again || std::strcmp(argv[first], "--again") == 0;
    }
    if (first + 1 >= argc) {
        std::fprintf(stderr, "usage: bench_search [--walk] [--again] --folder FOLDER...\n");
        return 2;
    }
    const std::vector<std::string> folders(argv + first + 1, argv + argc);
    SearchedWindow window(argv);
    for (const std::string& folder : folders) {
        const long before = residentBytes();
        const Duration search = window.Search(folder, !walk);
        const int rows = window.Rows();
        const long bytes = (residentBytes() - before) / (rows > 0 ? rows : 1);
        report(walk ? "walk" : "index", rows, search);
        std::printf(" rows_a_second=%.0f bytes_a_row=%ld\n", rows / search.whole * 1e3, bytes);
        if (again) {
            report("click", rows, window.ClickHeading(marrowbeck::RowRecord::kFilename));
            std::printf("\n");
            report("again", rows, window.Search(folder, !walk));
            std::printf("\n");
            report("empty", rows, window.DeleteAllRows());
            std::printf("\n");
        }
        std::fflush(stdout);
    }
    return 0;
}
