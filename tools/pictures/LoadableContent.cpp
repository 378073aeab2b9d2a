// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/pictures/LoadableContent.h"

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace marrowbeck::tools {

namespace {

using namespace std::string_view_literals;

/// A number with its least significant byte first.
std::uint32_t littleEndian(std::string_view bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

std::uint32_t bigEndian(std::string_view bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

/// Appends a chunk of PNG; `content` begins with its type.
void addChunk(std::string& png, std::string_view content) {
    const auto add = [&png](std::uint32_t number) {
        for (int shift = 24; shift >= 0; shift -= 8) png += static_cast<char>(number >> shift & 0xff);
    };
    add(static_cast<std::uint32_t>(content.size() - 4));
    png.append(content);
    add(static_cast<std::uint32_t>(
        crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()))));
}

constexpr std::string_view pngMark = "\x89PNG\r\n\x1a\n";

bool hasAt(std::string_view bytes, std::size_t at, std::string_view mark) {
    return bytes.size() >= at + mark.size() && bytes.substr(at, mark.size()) == mark;
}

}  // namespace

LoadableContent::LoadableContent(Content content) : content_(content) {
    completeWebp();
    closePng();
    completePict();
    enterIcon();
    straightenTarga();
}

void LoadableContent::use(std::string changed) {
    own_ = std::move(changed);
    content_ = {reinterpret_cast<const std::uint8_t*>(own_.data()), own_.size()};
}

/// The decoder of WebP (RFC 9649) wants the whole file. Of one that was cut short the chunk with the pixels is made a
/// file of its own; what it lacks is made up, and shows as nothing much.
void LoadableContent::completeWebp() {
    constexpr std::size_t firstChunk = 12;
    constexpr std::size_t head = 8;
    constexpr std::uint32_t most = 256U << 20;
    if (!hasAt(bytes(), 0, "RIFF") || !hasAt(bytes(), 8, "WEBP")) return;
    if (std::size_t{littleEndian(bytes(), 4)} + head <= bytes().size()) return;
    for (std::size_t at = firstChunk; at + head <= bytes().size();) {
        const std::uint32_t size = littleEndian(bytes(), at + 4);
        const std::size_t whole = head + size + size % 2;
        if (hasAt(bytes(), at, "VP8 ") || hasAt(bytes(), at, "VP8L")) {
            if (size > most) return;
            std::string chunk(bytes().substr(at, whole));
            chunk.resize(whole, '\0');
            const auto length = static_cast<std::uint32_t>(whole + 4);
            std::string file = "RIFF";
            for (int shift = 0; shift < 32; shift += 8) file += static_cast<char>(length >> shift & 0xff);
            use(file.append("WEBP").append(chunk));
            return;
        }
        at += whole;
    }
}

/// The decoder of PNG (ISO/IEC 15948) takes a chunk whole or not at all, and many a file has all its pixels in one. Of
/// one that was cut short the last chunk is given the length that is left, and the end that it lacks.
void LoadableContent::closePng() {
    constexpr std::size_t firstChunk = 8;
    constexpr std::size_t head = 8;
    constexpr std::size_t check = 4;
    if (!hasAt(bytes(), 0, pngMark)) return;
    std::size_t at = firstChunk;
    std::size_t size = 0;
    for (; at + head <= bytes().size(); at += head + size + check) {
        size = bigEndian(bytes(), at);
        if (at + head + size + check > bytes().size()) break;
    }
    if (at + head >= bytes().size() || !hasAt(bytes(), at + 4, "IDAT")) return;
    std::string whole(bytes().substr(0, at));
    addChunk(whole, bytes().substr(at + 4, std::min(size + 4, bytes().size() - at - 4)));
    addChunk(whole, "IEND");
    use(std::move(whole));
}

/// The decoder takes a compressed chunk of PNG whole or not at all, and with it the picture: a profile or a text may be
/// larger than it wants, once it is unpacked.
bool LoadableContent::leaveOutExtras() {
    constexpr std::size_t firstChunk = 8;
    constexpr std::size_t around = 12;
    if (!hasAt(bytes(), 0, pngMark)) return false;
    std::string rest(bytes().substr(0, firstChunk));
    for (std::size_t at = firstChunk; at + around <= bytes().size();) {
        const std::size_t size = std::min(bigEndian(bytes(), at) + around, bytes().size() - at);
        const std::string_view type = bytes().substr(at + 4, 4);
        if (type != "iCCP" && type != "zTXt" && type != "iTXt") rest += bytes().substr(at, size);
        at += size;
    }
    if (rest.size() == bytes().size()) return false;
    use(std::move(rest));
    return true;
}

/// A QuickDraw picture begins with 512 bytes for anybody's use, mostly zeros. They may be missing when the picture was
/// cut out of another file.
void LoadableContent::completePict() {
    constexpr std::size_t room = 512;
    constexpr std::size_t version = 10;
    constexpr std::string_view marks[] = {"\x00\x11\x02\xff\x0c\x00"sv, "\x11\x01"sv};
    isPict_ = hasAt(bytes(), room + version, marks[0]) ||
              (hasAt(bytes(), room + version, marks[1]) && hasAt(bytes(), 0, std::string(room, '\0')));
    if (isPict_ || !hasAt(bytes(), version, marks[0])) return;
    isPict_ = true;
    use(std::string(room, '\0').append(bytes()));
}

/// A Targa file tells in its head at which corner its rows begin, most often at the lower left. Of its loaders some
/// turn it and some do not. It has no mark by which it could be known, but a head that agrees with itself.
void LoadableContent::straightenTarga() {
    constexpr std::size_t head = 18;
    constexpr std::size_t corner = 17;
    constexpr unsigned char fromRight = 0x10;
    constexpr unsigned char fromTop = 0x20;
    constexpr unsigned char reserved = 0xc0;
    if (bytes().size() < head || isPict_) return;
    const auto has = [this](std::size_t at, std::initializer_list<unsigned> values) {
        return std::find(values.begin(), values.end(), content_[at]) != values.end();
    };
    const bool hasMap = has(1, {1}) && has(2, {1, 9});
    const bool hasNone = has(1, {0, 1}) && has(2, {2, 3, 10, 11});
    const bool hasSize = (content_[12] | content_[13]) != 0 && (content_[14] | content_[15]) != 0;
    const unsigned char place = content_[corner];
    if (!(hasMap || hasNone) || !hasSize || !has(16, {8, 15, 16, 24, 32}) || (place & reserved) != 0) return;
    const bool isFromRight = (place & fromRight) != 0;
    orientation_ = (place & fromTop) != 0 ? (isFromRight ? 2 : 1) : (isFromRight ? 3 : 4);
    if (orientation_ == 1) return;
    std::string straight(bytes());
    straight[corner] = static_cast<char>((place & ~fromRight) | fromTop);
    use(std::move(straight));
}

/// An icon file is a table that names kind, place and size of its pictures, and these behind it. The largest, with most
/// bits a pixel, is taken for the icon; loaders take the first. It may be a PNG file of its own.
void LoadableContent::enterIcon() {
    constexpr std::size_t tableStart = 6;
    constexpr std::size_t entrySize = 16;
    constexpr std::string_view onePicture = "\0\0\1\0\1\0"sv;
    if (!hasAt(bytes(), 0, "\0\0\1\0"sv) || bytes().size() < tableStart) return;
    const auto byteAt = [this](std::size_t at) { return std::uint32_t{static_cast<unsigned char>(bytes()[at])}; };
    const auto isPngAt = [this](std::size_t at) { return hasAt(bytes(), at, pngMark); };
    std::size_t chosen = 0;
    std::pair<std::uint64_t, std::uint32_t> most;
    const std::size_t count = byteAt(4) | byteAt(5) << 8;
    for (std::size_t i = 0; i < count && tableStart + (i + 1) * entrySize <= bytes().size(); ++i) {
        const std::size_t entry = tableStart + i * entrySize;
        const std::size_t start = littleEndian(bytes(), entry + 12);
        if (start >= bytes().size()) continue;
        // A byte has no room for 256 and what is above. A PNG says it again, in the first of its chunks.
        std::uint64_t width = byteAt(entry) == 0 ? 256 : byteAt(entry);
        std::uint64_t height = byteAt(entry + 1) == 0 ? 256 : byteAt(entry + 1);
        if (isPngAt(start) && start + 24 <= bytes().size()) {
            width = bigEndian(bytes(), start + 16);
            height = bigEndian(bytes(), start + 20);
        }
        const std::pair size(width * height, byteAt(entry + 6) | byteAt(entry + 7) << 8);
        if (chosen != 0 && size <= most) continue;
        chosen = entry;
        most = size;
    }
    if (chosen == 0) return;
    const std::size_t start = littleEndian(bytes(), chosen + 12);
    const std::size_t size = std::min<std::size_t>(littleEndian(bytes(), chosen + 8), bytes().size() - start);
    if (isPngAt(start)) {
        content_ = content_.subspan(start, size);
    } else if (count > 1) {
        std::string file(onePicture);
        file.append(bytes().substr(chosen, entrySize - 4)).append({tableStart + entrySize, 0, 0, 0});
        use(file.append(bytes().substr(start, size)));
    }
}

}  // namespace marrowbeck::tools
