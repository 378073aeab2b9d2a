// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "net/HTTPHead.h"

using namespace marrowbeck;

// A head is found at the same place whether its bytes come one by one or all that are needed at once, and whatever it
// says can be read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view received(reinterpret_cast<const char*>(data), size);
    HeadSearch search;
    for (std::size_t arrived = 0; arrived <= size; ++arrived) {
        const auto found = search.Look(received.substr(0, arrived));
        const auto atOnce = HeadSearch().Look(received.substr(0, arrived));
        if (found.has_value() != atOnce.has_value()) std::abort();
        if (!found) continue;
        if (found->headSize != atOnce->headSize || found->headSize + found->emptyLineSize != arrived) std::abort();
        const HTTPHead head = ReadHTTPHead(String(received.substr(0, found->headSize), Encodings::Undefined));
        if (!head.headers || head.totalLength != ToInteger(Val(head.headers->Value("content-LENGTH")))) std::abort();
        break;
    }
    return 0;
}
