// SPDX-License-Identifier: GPL-2.0-or-later
#include "net/HTTPHead.h"

#include <algorithm>

#include "net/LineEnd.h"

namespace marrowbeck {

std::optional<HeadSearch::Found> HeadSearch::Look(std::string_view received) {
    constexpr std::size_t kLongest = 4;
    const std::size_t begin = searched_ - std::min(searched_, kLongest - 1);
    const auto at = [received, begin](std::string_view emptyLine) -> std::optional<Found> {
        const std::size_t size = received.find(emptyLine, begin);
        if (size == std::string_view::npos) return std::nullopt;
        return Found{size, emptyLine.size()};
    };
    if (const auto found = at("\r\n\r\n")) return found;
    if (const auto found = at("\n\n")) return found;
    if (const auto found = at("\r\r")) return found;
    searched_ = received.size();
    return std::nullopt;
}

bool IsTooLong(std::string_view head) {
    constexpr std::ptrdiff_t kMostLines = 5000;
    return head.size() >= TCPSocket::IncomingLimit || std::count(head.begin(), head.end(), '\n') > kMostLines ||
           std::count(head.begin(), head.end(), '\r') > kMostLines;
}

HTTPHead ReadHTTPHead(const String& text) {
    const String eol = LineEndOf(text);
    const auto headers = New<InternetHeaders>();
    const int status = ToInteger(Val(NthField(NthField(text, eol, 1), " ", 2)));
    headers->_ParseHeaders(text);
    return {status, ToInteger(Val(headers->Value("Content-length"))), headers};
}

}  // namespace marrowbeck
