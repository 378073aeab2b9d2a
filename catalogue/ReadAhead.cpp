// SPDX-License-Identifier: GPL-2.0-or-later
#include "catalogue/ReadAhead.h"

#include <algorithm>
#include <utility>

namespace marrowbeck {
namespace {

/// As many as keep all processors reading while the window cuts an answer, and few enough to be dropped at once.
constexpr int kFilesAhead = 32;

}  // namespace

ReadAhead::ReadAhead(std::function<String(int)> pathAt, int last, std::vector<const char*> questions)
    : pathAt_(std::move(pathAt)), last_(last), questions_(std::move(questions)) {}

ReadAhead::~ReadAhead() {
    Shell::ExpectNothing();
}

void ReadAhead::Reached(int index) {
    // Not every file is asked everything.
    for (; !asked_.empty() && asked_.front().first < index; asked_.pop_front()) {
        Shell::ExpectNothing(asked_.front().second);
    }
    for (next_ = std::max(next_, index); next_ <= Min(index + kFilesAhead, last_); ++next_) {
        const String path = pathAt_(next_);
        if (path.IsEmpty()) continue;
        for (const char* question : questions_) {
            asked_.emplace_back(next_, question + path);
            Shell::Expect(asked_.back().second);
        }
    }
}

}  // namespace marrowbeck
