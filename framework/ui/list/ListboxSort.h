// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <vector>

namespace framework {

/// A stable merge sort that is done in small steps, so that others can run between them. It asks one question only,
/// whether one element belongs behind another, and never twice the other way round: so it is safe with an answer that
/// is no strict order, and elements of which neither belongs behind the other keep their order.
class ListboxSort {
  public:
    /// Whether the element with the number `one` belongs behind that with the number `other`.
    using IsBehind = std::function<bool(int one, int other)>;

    /// Of the elements 0 to count - 1.
    ListboxSort(int count, IsBehind isBehind);

    /// Makes at most one comparison. False once the order is complete.
    bool Step();

    /// The numbers of the elements in their order, complete after the last Step.
    const std::vector<int>& Order() const { return order_; }

  private:
    void beginMerge(std::size_t start);
    void endMerge();

    IsBehind isBehind_;
    std::vector<int> order_;
    std::vector<int> merged_;
    /// Length of the runs that are in order already; two of them are merged at a time.
    std::size_t run_ = 1;
    std::size_t start_ = 0;
    std::size_t middle_ = 0;
    std::size_t end_ = 0;
    std::size_t left_ = 0;
    std::size_t right_ = 0;
    bool begun_ = false;
};

}  // namespace framework
