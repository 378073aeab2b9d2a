#include "net/LineEnd.h"

#include <algorithm>

namespace marrowbeck {

String LineEndOf(const String& text) {
    const std::string_view bytes = text.Bytes();
    for (const char* const eol : {"\r\n", "\n", "\r"}) {
        if (bytes.find(eol) != std::string_view::npos) return eol;
        LoopYield();
    }
    return "\r\n";
}

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

}  // namespace marrowbeck
