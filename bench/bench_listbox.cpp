// SPDX-License-Identifier: GPL-2.0-or-later
// How a list bears 100,000 rows: time and memory of filling it, time of sorting it, and how long the window stands
// still meanwhile.

#include <malloc.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QTableView>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "bench/Pulse.h"
#include "framework/core/text/Numbers.h"
#include "framework/core/threads/Thread.h"
#include "framework/core/threads/Waiting.h"
#include "framework/ui/list/Listbox.h"

using namespace framework;
using marrowbeck::bench::Duration;
using marrowbeck::bench::Measure;

namespace {

constexpr int kRows = 100000;

/// Adds a row with the texts, help tags and tags that an image has.
void addRow(Listbox& list, int number, std::mt19937& random) {
    const std::string name = "DSC_" + std::to_string(random() % 1000000) + ".jpg";
    const std::string size = std::to_string(random() % 100) + "." + std::to_string(10 + random() % 90);
    const std::string fileSize = std::to_string(random() % 10) + "." + std::to_string(10 + random() % 90);
    const std::string pixels = std::to_string(100 + random() % 5000) + " x " + std::to_string(100 + random() % 4000);
    list.AddRow(String(name));
    const int row = list.LastIndex();
    const auto set = [&list, row](int column, const std::string& text, const std::string& label, const char* unit) {
        list.Cell(row, column, String(text));
        list.CellHelpTag(row, column, String(label) + String(text) + String(unit));
    };
    list.CellHelpTag(row, 0, "Name: " + String(name));
    list.CellTag(row, 0, "RGB");
    list.CellTag(row, 1, String("file:/home/somebody/Pictures/2024/Summer/" + name + std::to_string(number)));
    set(1, size, "Image size: ", "MB");
    set(2, fileSize, "Compressed file size: ", "MB");
    set(3, pixels, "Image dimensions: ", " pixels");
    set(4, "sRGB IEC61966-2.1", "Color Profile: ", "");
    set(5, "Somebody", "Copyright: ", "");
    set(6, "sea,sky", "Keywords: ", "");
    set(7, "8 bit JPEG image", "Kind: ", "");
    list.Cell(row, 8, "\xE2\x9C\x93");
    const std::string camera = "Maker Model\nISO" + std::to_string(100 << (random() % 5)) + "\nF2.8\n1/250s\n50.0mm";
    list.CellHelpTag(row, 8, String(camera));
    set(9, "Landscape", "Orientation: ", "");
    set(10, number % 4 == 0 ? "A caption of usual length, number " + std::to_string(number) : "", "Caption: ", "");
}

void report(const char* what, double value, const char* unit) {
    std::printf("%-62s %10.1f %s\n", what, value, unit);
}

void report(const char* what, const Duration& duration) {
    report(what, duration.whole, "ms");
    report("  longest pause of the event loop", duration.longestPause, "ms");
}

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    const auto list = New<Listbox>();
    list->ColumnCount(11);
    list->HasHeading(true);
    list->SelectionType(1);
    list->Place(0, 0, 806, 400);
    list->OnCompareRows = [&list](int row1, int row2, int column, int& result) {
        if (column < 1 || column > 3) return false;
        result = Val(list->Cell(row2, column)) < Val(list->Cell(row1, column)) ? 1 : -1;
        return true;
    };
    list->Native()->show();
    QCoreApplication::processEvents();

    std::mt19937 random(1);
    QElapsedTimer time;
    const auto passed = [&time] { return static_cast<double>(time.nsecsElapsed()) / 1e6; };
    const std::size_t before = mallinfo2().uordblks;
    time.start();
    for (int i = 0; i < kRows; ++i) addRow(*list, i, random);
    report("AddRow with cells, help tags and tags, 100,000 rows in one go", passed(), "ms");
    time.start();
    QCoreApplication::processEvents();
    report("Announcing and painting them", passed(), "ms");
    report("Memory", static_cast<double>(mallinfo2().uordblks - before) / kRows, "bytes a row");

    list->HeadingIndex(1);
    time.start();
    list->Sort();
    report("Sort by a number, on the main stack", passed(), "ms");
    time.start();
    list->ColumnSortDirection(1, -1);
    list->Sort();
    report("The other way round", passed(), "ms");
    list->HeadingIndex(0);
    time.start();
    list->Sort();
    report("Sort by text", passed(), "ms");

    const auto thread = New<Thread>();
    const auto runs = [&thread] { return thread->State() != Thread::NotRunning; };
    list->HeadingIndex(2);
    thread->OnRun = [&list] { list->Sort(); };
    report("Sort by a number, on a thread", Measure([&thread] { thread->Run(); }, runs));

    auto& view = *static_cast<QTableView*>(list->Native());
    bool placed = false;
    QObject::connect(view.model(), &QAbstractItemModel::layoutChanged, [&placed] { placed = true; });
    report("Sort by a click on a heading",
           Measure([&view] { emit view.horizontalHeader()->sectionClicked(3); }, [&placed] { return !placed; }));

    for (const char* typed : {"DSC_9", "nothing"}) {
        time.start();
        view.keyboardSearch(QString::fromLatin1(typed));
        report(typed[0] == 'D' ? "Typing a name's first letters, found" : "  not found", passed(), "ms");
    }

    const auto never = [] { return false; };
    report("DeleteAllRows", Measure([&list] { list->DeleteAllRows(); }, never));

    thread->OnRun = [&list, &random] {
        for (int i = 0; i < kRows; ++i) {
            addRow(*list, i, random);
            LoopYield();
        }
    };
    const auto fill = [&thread] { thread->Run(); };
    report("Filling from a thread, rows coming to the screen meanwhile", Measure(fill, runs));
    return 0;
}
