// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "plist/plist.h"

using namespace marrowbeck;

/// Reads any bytes as the entries of a property list, and prints what came of them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const Ref<TextOutputStream> nowhere = TextOutputStream::Create(GetFolderItem("/dev/null"));
    const String text(std::string_view(reinterpret_cast<const char*>(bytes), size));
    try {
        const auto root = New<plistDict>();
        root->Load(New<TextInputStream>(text), "root", false, Nil, Nil, true);
        root->Write(nowhere, 1);
    } catch (const RuntimeException&) {
        // Nested too deeply, or a type without a value.
    }
    return 0;
}
