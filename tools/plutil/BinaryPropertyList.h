// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace marrowbeck::tools {

/// The objects of a binary property list, format "bplist00", and how they hang
/// together. A few bytes of it can stand for a tree of any size, since an object
/// may be referred to from many places, and even from within itself.
class BinaryPropertyList {
  public:
    explicit BinaryPropertyList(std::string_view file) : file_(file) {}

    /// Empty when the tree from the top object on is whole and within the limits
    /// of PropertyListLimits, else a phrase that says what is wrong.
    std::string Check();

  private:
    /// An object with all below it, every reference counted.
    struct Extent {
        std::uint64_t values = 1;
        std::uint64_t bytes = 0;
        std::uint32_t height = 1;
        enum : std::uint8_t { unseen, open, done } state = unseen;
    };
    /// An object as the file has it.
    struct Object {
        std::uint64_t bytes = 0;
        std::uint64_t firstReference = 0;
        std::uint64_t references = 0;
    };
    struct Step {
        std::uint64_t object;
        std::uint64_t reference;
        Object content;
    };

    bool readTrailer();
    std::uint64_t number(std::uint64_t at, unsigned size) const;
    std::optional<Object> object(std::uint64_t index) const;
    std::string walk();
    static bool add(Extent& extent, const Extent& below);

    std::string_view file_;
    unsigned offsetSize_ = 0;
    unsigned referenceSize_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t top_ = 0;
    std::uint64_t table_ = 0;
    std::vector<Extent> extents_;
    std::vector<Step> steps_;
};

}  // namespace marrowbeck::tools
