// SPDX-License-Identifier: GPL-2.0-or-later
#include "bench/SearchedWindow.h"

#include <QHeaderView>
#include <QTableView>
#include <cstdlib>
#include <filesystem>

#include "app/App.h"
#include "app/Startup.h"
#include "tests/support/EventLoop.h"
#include "tests/support/UpdateCheck.h"

namespace marrowbeck::bench {
namespace {

std::string makeHome() {
    std::string home = (std::filesystem::temp_directory_path() / "marrowbeck-bench.XXXXXX").string();
    if (!mkdtemp(home.data())) std::abort();
    return home;
}

}  // namespace

SearchedWindow::SearchedWindow(char** argv) : home_(makeHome()) {
    setenv("XDG_DATA_HOME", home_.c_str(), 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    if (framework::RunFrameworkInitialization(1, argv, {"Marrowbeck", "bench"}, _Startup) != 0) std::abort();
    Shell::SetToolsFolder(MARROWBECK_TOOLS, {"mdls", "sips", "look"});
    test::SwitchUpdateCheckOff();
    App::Current()->Event_Open();
    window_ = Global<Window1>();
    // What opening a window leaves to be done is not the search's.
    test::RunFor(300);
}

SearchedWindow::~SearchedWindow() {
    window_ = Nil;
    framework::internal::EndFramework();
    std::filesystem::remove_all(home_);
}

Duration SearchedWindow::Search(const std::string& folder, bool subfolders) {
    window_->Subfoldercheckbox->Value(subfolders);
    bool opened = false;
    return Measure(
        [&] {
            OnOwnThread([&] {
                App::Current()->Event_OpenDocument(New<FolderItem>(String(folder)));
                opened = true;
            });
        },
        [&] { return !opened || window_->SizeThread1->State() != Thread::NotRunning; });
}

Duration SearchedWindow::ClickHeading(int column) {
    auto& view = *static_cast<QTableView*>(window_->Listbox1->Native());
    bool placed = false;
    const auto watch = QObject::connect(view.model(), &QAbstractItemModel::layoutChanged, [&placed] { placed = true; });
    const Duration duration = Measure([&view, column] { emit view.horizontalHeader()->sectionClicked(column); },
                                      [&placed] { return !placed; });
    QObject::disconnect(watch);
    return duration;
}

Duration SearchedWindow::DeleteAllRows() {
    return Measure([this] { window_->Listbox1->DeleteAllRows(); }, [] { return false; });
}

}  // namespace marrowbeck::bench
