// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "app/Window1.h"
#include "bench/Pulse.h"

namespace marrowbeck::bench {

/// The program's own window, started on preferences of its own, so that its searches can be timed. One in a process.
class SearchedWindow {
  public:
    explicit SearchedWindow(char** argv);
    ~SearchedWindow();
    SearchedWindow(const SearchedWindow&) = delete;
    SearchedWindow& operator=(const SearchedWindow&) = delete;

    /// From the opening of the folder to the sorted list.
    Duration Search(const std::string& folder, bool subfolders);
    /// Sorts the other way round, as a click on the heading does.
    Duration ClickHeading(int column);
    Duration DeleteAllRows();

    int Rows() const { return window_->Listbox1->ListCount(); }

  private:
    std::string home_;
    Ref<Window1> window_;
};

}  // namespace marrowbeck::bench
