// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "plist/plistDict.h"

namespace marrowbeck {

/// Prints the entries of nodes in the order of their keys. Where the lines go is for the derived class.
class EntryPrinter {
  public:
    virtual ~EntryPrinter() = default;
    /// Prints the entries of `node` behind `level` tabs.
    void Print(plistDict& node, std::int32_t level);

  protected:
    /// Takes a line without its end.
    virtual void Line(std::string_view line) = 0;
    /// Prints what stands behind the key line of a dictionary's entry.
    virtual void AfterKey(plistDict& /*node*/, const String& /*key*/, const String& /*indent*/) {}
    virtual void Below(plistDict& child, std::int32_t level) = 0;

    void Put(std::initializer_list<std::string_view> parts);

  private:
    void printNodes(plistDict& node, const String& key, const String& word, std::int32_t level, const String& indent);

    std::string line_;
};

}  // namespace marrowbeck
