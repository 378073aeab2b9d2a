// SPDX-License-Identifier: GPL-2.0-or-later
// How long a property list takes to load and to save: a document of 250,000 entries (12 MB) beside libplist's command
// on the same file, and the growth from 10,000 to 1,000,000 entries.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "plist/plist.h"

using namespace marrowbeck;

namespace {

/// Of several runs the shortest: the others were disturbed.
double milliseconds(int runs, const std::function<void()>& work) {
    double best = 0;
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        if (run == 0 || time.count() < best) best = time.count();
    }
    return best;
}

/// One node in ten entries, and one string of several kinds of values.
void fill(const Ref<plistDict>& root, int entries) {
    Ref<plistDict> node = root;
    for (int i = 0; i < entries; ++i) {
        const String key = "key " + Str(i);
        if (i % 100 == 0) {
            node = root->child(key);
        } else if (i % 10 == 0) {
            node->SetInteger(key, i);
        } else {
            node->SetString(key, "value " + Str(i) + " of it");
        }
    }
}

struct Times {
    double load;
    double save;
};

Times measure(const Ref<FolderItem>& file, int entries) {
    file->Delete();
    {
        const auto document = New<plist>(file);
        fill(document->root, entries);
        document->Save();
    }
    const int runs = entries > 300'000 ? 2 : 5;
    Ref<plist> document;
    const double load = milliseconds(runs, [&] { document = New<plist>(file); });
    if (document->error) std::exit(1);
    return {load, milliseconds(runs, [&] { document->Save(); })};
}

/// What must not grow faster than the number of entries: adding to an array, walking over it, looking up nodes and
/// keys.
void measureTree(const Ref<FolderItem>& file, int entries) {
    const auto document = New<plist>(file);
    const Ref<plistDict> root = document->root;
    root->AddArray("array");
    const Ref<plistDict> array = root->child("array");
    const double append = milliseconds(1, [&] {
        for (int i = 0; i < entries; ++i) array->AppendInteger(i);
    });
    int walked = 0;
    const double walk = milliseconds(1, [&] {
        for (array->MoveFirst(); !array->eof; array->MoveNext()) walked += array->CurrentKey().IsEmpty() ? 0 : 1;
    });
    const double lookUp = milliseconds(1, [&] {
        for (int i = 0; i < entries; ++i) (void)array->GetInteger(Str(i));
    });
    const double child = milliseconds(1, [&] {
        for (int i = 0; i < entries; ++i) root->child("node " + Str(i));
        for (int i = 0; i < entries; ++i) root->child("node " + Str(i));
    });
    const double each = 1e3 / entries;
    std::printf("%8d entries: append %5.2f, walk %5.2f, look up %5.2f, child made and found %5.2f us an entry (%d)\n",
                entries, append * each, walk * each, lookUp * each, child * each, walked);
}

}  // namespace

int main() {
    const Ref<FolderItem> folder = GetFolderItem(String(std::filesystem::temp_directory_path().string()))
                                       ->Child("marrowbeck-bench-plist-" + Str(std::rand()));
    folder->CreateAsFolder();
    plist::StagingFile(folder->Child("staging"));
    const Ref<FolderItem> file = folder->Child("document.plist");
    for (const int entries : {10'000, 100'000, 1'000'000}) measureTree(folder->Child("none.plist"), entries);
    for (const int entries : {10'000, 100'000, 1'000'000, 250'000}) {
        const Times times = measure(file, entries);
        std::printf("%8d entries, %5.1f MB: load %7.1f ms, save %7.1f ms; %5.2f and %5.2f us an entry\n", entries,
                    static_cast<double>(file->Length()) / 1e6, times.load, times.save, times.load * 1e3 / entries,
                    times.save * 1e3 / entries);
        if (entries != 250'000) continue;
        const std::string path = file->ShellPath().ToStd();
        // From XML to XML the command copies bytes without reading them, so it is sent by way of the binary form.
        const std::string command = "plistutil -f bin -i " + path + " -o " + path + ".bin && plistutil -f xml -i " +
                                    path + ".bin -o " + path + ".out";
        if (std::system("plistutil -v >/dev/null 2>&1") != 0) break;
        const double other = milliseconds(5, [&] { (void)!std::system(command.c_str()); });
        std::printf("plistutil, to binary form and back: %7.1f ms; ratio %.2f\n", other,
                    (times.load + times.save) / other);
    }
    std::filesystem::remove_all(folder->AbsolutePath().ToStd());
}
