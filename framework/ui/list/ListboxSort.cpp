// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/ListboxSort.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace framework {

ListboxSort::ListboxSort(int count, IsBehind isBehind)
    : isBehind_(std::move(isBehind)), order_(static_cast<std::size_t>(std::max(count, 0))) {
    std::iota(order_.begin(), order_.end(), 0);
    merged_.reserve(order_.size());
    beginMerge(0);
}

bool ListboxSort::Step() {
    if (run_ >= order_.size()) return false;
    if (middle_ >= end_) {
        // A single run at the end has no partner.
        endMerge();
    } else if (!begun_) {
        // Two runs that follow each other already, as all do in rows that were sorted before, need no merging.
        begun_ = true;
        if (!isBehind_(order_[middle_ - 1], order_[middle_])) endMerge();
    } else {
        const bool takeRight = isBehind_(order_[left_], order_[right_]);
        merged_.push_back(order_[takeRight ? right_++ : left_++]);
        if (left_ == middle_ || right_ == end_) endMerge();
    }
    return true;
}

void ListboxSort::beginMerge(std::size_t start) {
    start_ = start;
    middle_ = std::min(start + run_, order_.size());
    end_ = std::min(start + 2 * run_, order_.size());
    left_ = start_;
    right_ = middle_;
    begun_ = false;
    merged_.clear();
}

/// Puts the merged elements in place, those left of the left run behind them; those left of the right run are in place.
void ListboxSort::endMerge() {
    const auto place = [this](std::size_t index) { return order_.begin() + static_cast<std::ptrdiff_t>(index); };
    if (right_ > middle_) std::move_backward(place(left_), place(middle_), place(right_));
    std::copy(merged_.begin(), merged_.end(), place(start_));
    if (end_ < order_.size()) {
        beginMerge(end_);
    } else {
        run_ *= 2;
        beginMerge(0);
    }
}

}  // namespace framework
