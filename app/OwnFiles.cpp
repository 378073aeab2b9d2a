// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/OwnFiles.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace marrowbeck {
namespace {

/// A hash, in decimal, and a name behind it. Of all hashes 1 in 2,000 has fewer digits; of files that people call by a
/// number, nearly all have.
bool isThumbnailName(std::string_view name) {
    constexpr std::size_t kFewestDigits = 7;
    if (name.starts_with('-')) name.remove_prefix(1);
    return name.find_first_not_of("0123456789") >= kFewestDigits && name.size() > kFewestDigits;
}

/// The number of four bytes, the highest first.
std::uint32_t numberAt(std::string_view bytes, std::size_t position) {
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(position, 4)) number = number << 8U | static_cast<std::uint8_t>(byte);
    return number;
}

bool isSmallPng(const Ref<FolderItem>& file) {
    constexpr std::string_view kSignature("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    constexpr int kBeginning = 24;
    const Ref<BinaryStream> stream = file->OpenAsBinaryFile(false);
    if (!stream) return false;
    const std::string beginning = stream->Read(kBeginning).ToStd();
    return beginning.size() == kBeginning && beginning.starts_with(kSignature) &&
           numberAt(beginning, 16) <= kThumbnailSide && numberAt(beginning, 20) <= kThumbnailSide;
}

}  // namespace

bool IsHalfMadeName(const String& name) {
    constexpr std::string_view kPattern = ".new-XXXXXX";
    return name.ByteCount() == kPattern.size() && name.Bytes().starts_with(kPattern.substr(0, 5));
}

bool IsOwnFile(const Ref<FolderItem>& file) {
    const String name = file->Name();
    const std::string_view bytes = name.Bytes();
    if (IsHalfMadeName(name)) return true;
    if (bytes.starts_with(std::string(kPreferencesName) + ".temp") && bytes.ends_with(".plist")) return true;
    return isThumbnailName(bytes) && isSmallPng(file);
}

}  // namespace marrowbeck
