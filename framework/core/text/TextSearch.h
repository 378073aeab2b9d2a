// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/core/text/String.h"

namespace framework {

/// Goes through the places of one text in another, without regard to case. Takes linear time in the usual case, and
/// hardly more than a search for a byte when both are ASCII. Both texts must outlive the search.
class TextSearch {
  public:
    /// Where a text was found, in bytes. Its size can differ from that of the text searched for.
    struct Match {
        std::size_t offset;
        std::size_t size;
        std::size_t End() const { return offset + size; }
    };

    /// `find` must not be empty.
    TextSearch(const String& text, const String& find);

    /// The first match that begins at the byte `from` or later; `from` must be the beginning of a character, and no
    /// smaller than in the call before.
    std::optional<Match> Next(std::size_t from);

  private:
    std::optional<Match> nextByBytes(std::size_t from);
    std::optional<Match> nextByCharacters(std::size_t from) const;
    std::size_t nextFirstByte(std::size_t from);
    std::optional<std::size_t> matchAt(std::size_t offset) const;

    std::string_view bytes_;
    TextEncoding encoding_;
    bool byBytes_;
    // The text searched for, folded: as bytes, or else as code points.
    std::string find_;
    std::vector<std::uint32_t> findCodes_;
    // Where the small and the capital form of its first byte stand next.
    std::size_t nextSmall_ = 0;
    std::size_t nextCapital_ = 0;
};

}  // namespace framework
