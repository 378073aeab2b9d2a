// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace marrowbeck::tools {

/// What a property list may be for the library that converts it, which calls
/// itself for each level and copies what is referred to twice.
struct PropertyListLimits {
    static constexpr unsigned long long values = 4'000'000;
    static constexpr unsigned nesting = 512;
    /// Bytes of the XML form, as far as they can be told beforehand.
    static constexpr unsigned long long text = 2ULL << 30;
};

/// Whether the file, in binary or in XML form, stays within the limits, every
/// reference in a binary one leads to an object of it, and none leads back to
/// where it came from. Empty if so, else a phrase that says what is wrong. Takes
/// time and memory in proportion to the file. Says nothing of what the values mean.
std::string checkPropertyList(std::string_view file);

/// Whether the file is in binary form.
bool isBinaryPropertyList(std::string_view file);

}  // namespace marrowbeck::tools
