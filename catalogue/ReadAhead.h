// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "framework/framework.h"

namespace marrowbeck {

/// Lets the metadata tool read the files that come next while the window builds a row of those before. Lives as long
/// as a search: when that ends, or is stopped, what was not asked for is dropped.
class ReadAhead {
  public:
    /// `pathAt` gives the escaped path of the file at an index up to `last`, empty where none will be asked for.
    /// `questions` are those of MetadataQueries that each file gets.
    ReadAhead(std::function<String(int)> pathAt, int last, std::vector<const char*> questions);
    ~ReadAhead();
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    /// The file at `index` comes now, and those before it are done; the first call names the first file.
    void Reached(int index);

  private:
    std::function<String(int)> pathAt_;
    int last_;
    std::vector<const char*> questions_;
    int next_ = -1;
    /// What was asked of the files from the last one reached on.
    std::deque<std::pair<int, String>> asked_;
};

}  // namespace marrowbeck
