// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/Frames.h"

/// Cuts requests and answers out of any bytes, in pieces as the first byte says; what makes sense must come out the
/// same when it is framed again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t piece = std::size_t{1} + bytes[0];
    const std::string_view input(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    base::FrameStream stream(1U << 16);
    for (std::size_t i = 0; i < input.size(); i += piece) {
        stream.append(input.substr(i, piece));
        while (const auto body = stream.next()) {
            if (const auto request = base::requestFrom(*body)) {
                if (base::requestFrame(request->id, request->arguments) != base::framed(*body)) std::abort();
            }
            if (const auto answer = base::answerFrom(*body)) {
                if (base::answerFrame(*answer) != base::framed(*body)) std::abort();
            }
        }
    }
    return 0;
}
