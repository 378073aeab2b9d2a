// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

#include "framework/core/objects/Exceptions.h"

namespace framework {

/// A zero-based array of values. An index outside its bounds raises OutOfBoundsException.
template <class T>
class Array {
  public:
    Array() = default;
    Array(std::initializer_list<T> elements) : elements_(elements) {}
    explicit Array(std::vector<T> elements) : elements_(std::move(elements)) {}

    /// The highest index, -1 when empty.
    int Ubound() const { return static_cast<int>(elements_.size()) - 1; }

    const T& operator()(int index) const { return elements_[checked(index)]; }
    T& operator()(int index) { return elements_[checked(index)]; }

    void Append(T element) { elements_.push_back(std::move(element)); }
    void Remove(int index) { elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(checked(index))); }
    /// Makes `ubound` the highest index: cuts the array, or fills it up with default values. -1 empties it.
    void Redim(int ubound) {
        if (ubound < -1) throw OutOfBoundsException();
        elements_.resize(static_cast<std::size_t>(ubound) + 1);
    }

    auto begin() const { return elements_.begin(); }
    auto end() const { return elements_.end(); }

  private:
    std::size_t checked(int index) const {
        if (index < 0 || static_cast<std::size_t>(index) >= elements_.size()) throw OutOfBoundsException();
        return static_cast<std::size_t>(index);
    }

    std::vector<T> elements_;
};

}  // namespace framework
