// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "net/InternetHeaders.h"

using namespace marrowbeck;

// Any text can be read as a header block; each occurrence is found again, and removing them all leaves nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto headers = New<InternetHeaders>();
    headers->_ParseHeaders(String(std::string_view(reinterpret_cast<const char*>(data), size), Encodings::Undefined));
    headers->_FormatEmailHeaders();
    headers->_FormatHTTPHeaders();
    while (headers->Count() > 0) {
        const int count = headers->Count();
        const String name = headers->Name(0);
        const int occurrences = headers->NameCount(name);
        if (occurrences < 1) std::abort();
        headers->Delete(name);
        if (headers->Count() != count - occurrences) std::abort();
    }
    return 0;
}
