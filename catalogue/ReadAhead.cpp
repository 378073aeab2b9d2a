// SPDX-License-Identifier: GPL-2.0-or-later
#include "catalogue/ReadAhead.h"

#include <utility>

#include "catalogue/MetadataQueries.h"

namespace marrowbeck {
namespace {

/// As many as keep all processors reading while the window cuts an answer, and few enough to be dropped at once.
constexpr int kFilesAhead = 32;

}  // namespace

ReadAhead::ReadAhead(std::function<String(int)> pathAt, int last) : pathAt_(std::move(pathAt)), last_(last) {}

ReadAhead::~ReadAhead() {
    Shell::ExpectNothing();
}

void ReadAhead::Reached(int index) {
    if (next_ <= index) next_ = index + 1;
    for (; next_ <= Min(index + kFilesAhead, last_); ++next_) {
        const String path = pathAt_(next_);
        if (path.IsEmpty()) continue;
        Shell::Expect(MetadataQueries::kAll + path);
        Shell::Expect(MetadataQueries::kCamera + path);
    }
}

}  // namespace marrowbeck
