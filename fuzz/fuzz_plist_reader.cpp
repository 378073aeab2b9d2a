#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

#include "framework/core/Descriptor.h"
#include "plist/plist.h"

using namespace marrowbeck;

/// Reads any bytes as the entries of a property list, and prints what came of them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Descriptor file(memfd_create("document", MFD_CLOEXEC));
    if (!file.Write({reinterpret_cast<const char*>(bytes), size}) || lseek(file.Number(), 0, SEEK_SET) != 0) return 0;
    try {
        const auto root = New<plistDict>();
        root->Load(New<TextInputStream>(std::move(file)), "root", false, Nil, Nil, true);
        root->Write(TextOutputStream::Create(GetFolderItem("/dev/null")), 1);
    } catch (const RuntimeException&) {
        // Nested too deeply, or a type without a value.
    }
    return 0;
}
