// How fast a folder becomes rows, and whether the window stays alive meanwhile: bench_search PICTURE [ROWS...]
// For each number of rows it makes a folder of that many links to PICTURE and searches it in the real window with the
// real tools, with subfolders and without.

#include <unistd.h>

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/App.h"
#include "app/Startup.h"
#include "app/Window1.h"
#include "tests/support/EventLoop.h"
#include "tests/support/UpdateCheck.h"

namespace {

using namespace marrowbeck;
namespace fs = std::filesystem;

/// Resident memory in bytes, from the second field of /proc/self/statm.
long residentBytes() {
    std::ifstream file("/proc/self/statm");
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

std::string folderOf(const fs::path& root, const fs::path& picture, int rows) {
    const fs::path folder = root / std::to_string(rows);
    fs::create_directories(folder);
    const fs::path original = root / "original.jpg";
    if (!fs::exists(original)) fs::copy_file(picture, original);
    for (int i = 0; i < rows; ++i) fs::create_hard_link(original, folder / ("image " + std::to_string(i) + ".jpg"));
    return folder.string();
}

void measure(const std::string& folder, bool subfolders, int rows) {
    const Ref<Window1> window = Global<Window1>();
    window->Subfoldercheckbox->Value(subfolders);
    window->Listbox1->DeleteAllRows();
    marrowbeck::test::RunFor(50);
    const long before = residentBytes();
    qint64 longestPause = 0;
    QElapsedTimer sinceTick;
    QTimer ticks;
    ticks.callOnTimeout([&] { longestPause = std::max(longestPause, sinceTick.restart()); });
    sinceTick.start();
    ticks.start(1);
    QElapsedTimer clock;
    clock.start();
    App::Current()->Event_OpenDocument(New<FolderItem>(String(folder)));
    while (window->SizeThread1->State() != Thread::NotRunning) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 1000);
    }
    const double seconds = static_cast<double>(clock.elapsed()) / 1000.0;
    const int listed = window->Listbox1->ListCount();
    std::printf("%-10s %7d rows: %8.2f s %8.0f rows/s, longest pause %4lld ms, %6.0f bytes a row\n",
                subfolders ? "index" : "walk", listed, seconds, listed / seconds, static_cast<long long>(longestPause),
                static_cast<double>(residentBytes() - before) / rows);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_search PICTURE [ROWS...]\n");
        return 2;
    }
    std::vector<int> sizes;
    for (int i = 2; i < argc; ++i) sizes.push_back(std::atoi(argv[i]));
    if (sizes.empty()) sizes = {1000, 10000, 20000};
    const fs::path picture = fs::absolute(argv[1]);
    std::string root = "/tmp/bench-search.XXXXXX";
    if (!mkdtemp(root.data())) return 1;
    setenv("XDG_DATA_HOME", root.c_str(), 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    int count = 1;
    if (framework::RunFrameworkInitialization(count, argv, {"Marrowbeck", "bench"}, _Startup) != 0) return 1;
    Shell::SetToolsFolder(MARROWBECK_TOOLS, {"mdls", "sips"});
    marrowbeck::test::SwitchUpdateCheckOff();
    App::Current()->Event_Open();
    for (const int rows : sizes) {
        const std::string folder = folderOf(root, picture, rows);
        measure(folder, false, rows);
        measure(folder, true, rows);
    }
    framework::internal::EndFramework();
    fs::remove_all(root);
    return 0;
}
