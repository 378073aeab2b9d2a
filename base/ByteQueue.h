// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace base {

/// Bytes that come in at one end and go out at the other, at a cost that does not depend on how many wait.
class ByteQueue {
  public:
    std::string_view Bytes() const { return std::string_view(bytes_).substr(taken_); }
    std::size_t Size() const { return bytes_.size() - taken_; }
    bool IsEmpty() const { return Size() == 0; }

    void Append(std::string_view bytes) { bytes_ += bytes; }
    /// Drops `count` bytes, at most all, from the front.
    void Drop(std::size_t count) {
        taken_ += std::min(count, Size());
        if (taken_ == bytes_.size()) {
            Clear();
        } else if (taken_ > bytes_.size() / 2) {
            bytes_.erase(0, taken_);
            taken_ = 0;
        }
    }
    void Clear() {
        bytes_.clear();
        taken_ = 0;
    }

  private:
    std::string bytes_;
    std::size_t taken_ = 0;
};

}  // namespace base
