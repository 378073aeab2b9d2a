// SPDX-License-Identifier: GPL-2.0-or-later
#include "catalogue/ReadAhead.h"

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
    if (next_ <= index) next_ = index + 1;
    for (; next_ <= Min(index + kFilesAhead, last_); ++next_) {
        const String path = pathAt_(next_);
        if (path.IsEmpty()) continue;
        for (const char* question : questions_) Shell::Expect(question + path);
    }
}

}  // namespace marrowbeck
