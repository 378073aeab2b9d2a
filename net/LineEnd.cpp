// SPDX-License-Identifier: GPL-2.0-or-later
#include "net/LineEnd.h"

#include <string_view>

namespace marrowbeck {

String LineEndOf(const String& text) {
    const std::string_view bytes = text.Bytes();
    for (const char* const eol : {"\r\n", "\n", "\r"}) {
        if (bytes.find(eol) != std::string_view::npos) return eol;
        LoopYield();
    }
    return "\r\n";
}

}  // namespace marrowbeck
