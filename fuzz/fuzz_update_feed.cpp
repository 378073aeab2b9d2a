// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "net/updateWindow.h"

using namespace marrowbeck;

namespace {

/// What is cut out of a text stands in it.
void expectPart(const String& text, const String& part) {
    if (text.Bytes().find(part.Bytes()) == std::string_view::npos) std::abort();
}

}  // namespace

// The values of a feed and the target of a short link, from pages of any kind.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const TextEncoding encoding : {Encodings::Undefined, Encodings::UTF8}) {
        const String page(bytes, encoding);
        for (const char* tag : {"CurrentVersion", "Description", "Free", "DownloadURLOSX"}) {
            const String value = updateWindow::returnValue(page, tag);
            expectPart(page, value);
            if (InStr(value, "</" + String(tag) + ">") > 0) std::abort();
        }
        expectPart(page, updateWindow::extractURL(page));
    }
    return 0;
}
