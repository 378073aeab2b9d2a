// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "framework/core/core.h"
#include "net/InternetHeaders.h"

namespace marrowbeck {

/// Looks for the empty line that ends a head, in bytes that come in piece by piece. Each byte is looked at once,
/// however small the pieces are.
class HeadSearch {
  public:
    struct Found {
        std::size_t headSize;       ///< The bytes before the line end of the last line.
        std::size_t emptyLineSize;  ///< The two line ends behind it.
    };

    /// Where the head ends in `received`, which is all that came in since the last Reset. The two line ends must be of
    /// one kind; CR LF is preferred to LF, and LF to CR, also when it stands further back.
    std::optional<Found> Look(std::string_view received);
    void Reset() { searched_ = 0; }

  private:
    std::size_t searched_ = 0;
};

/// Whether a head, as far as it is there, has a mebibyte or thousands of lines, so that reading it would hold us up for
/// nothing.
bool IsTooLong(std::string_view head);

/// What the head of an answer says. Any text can be read as one.
struct HTTPHead {
    /// The second word of the first line; 0 where that is no number.
    int httpStatusCode;
    /// The first Content-length; 0 without one. A number beyond the range is the end of the range.
    int totalLength;
    Ref<InternetHeaders> headers;
};

HTTPHead ReadHTTPHead(const String& text);

}  // namespace marrowbeck
