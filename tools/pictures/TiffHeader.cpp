#include <algorithm>
#include <vector>

#include "tools/pictures/Formats.h"

namespace marrowbeck::tools {

namespace {

constexpr std::size_t maximumValues = 16;
constexpr std::uint64_t maximumEntries = 4096;

/// How the numbers of this file are stored.
struct Layout {
    ByteOrder order = ByteOrder::bigEndian;
    bool big = false;  ///< BigTIFF: counts and offsets of 64 bits
};

/// The entries of one directory that say something of the pixels.
struct Directory {
    std::uint64_t subfileType = 0;
    std::uint64_t photometric = 0;
    std::uint64_t samples = 1;
    std::vector<std::uint64_t> bits;
    std::vector<std::uint64_t> extraSamples;
    std::vector<std::uint64_t> subDirectories;
    std::uint64_t width = 0;
    std::uint64_t height = 0;
};

std::uint64_t readOffset(ByteSource& source, Layout layout, std::uint64_t at) {
    return layout.big ? source.u64(at, layout.order) : source.u32(at, layout.order);
}

/// The first whole numbers of an entry; none for an entry of another type.
std::vector<std::uint64_t> readValues(ByteSource& source, Layout layout, std::uint64_t entry) {
    std::uint64_t size = 0;
    switch (source.u16(entry + 2, layout.order)) {
        case 1:  // BYTE
            size = 1;
            break;
        case 3:  // SHORT
            size = 2;
            break;
        case 4:   // LONG
        case 13:  // IFD
            size = 4;
            break;
        case 16:  // LONG8
        case 18:  // IFD8
            size = 8;
            break;
        default:
            return {};
    }
    const std::uint64_t inlineBytes = layout.big ? 8 : 4;
    const std::uint64_t allValues = readOffset(source, layout, entry + 4);
    const std::uint64_t field = entry + 4 + inlineBytes;
    const std::uint64_t start = allValues <= inlineBytes / size ? field : readOffset(source, layout, field);
    std::vector<std::uint64_t> values;
    for (std::uint64_t i = 0; i < std::min<std::uint64_t>(allValues, maximumValues); ++i) {
        const std::uint64_t at = start + i * size;
        values.push_back(size == 1   ? source.u8(at)
                         : size == 2 ? source.u16(at, layout.order)
                         : size == 4 ? source.u32(at, layout.order)
                                     : source.u64(at, layout.order));
    }
    return values;
}

Directory readDirectory(ByteSource& source, Layout layout, std::uint64_t start) {
    Directory directory;
    const std::uint64_t count = layout.big ? source.u64(start, layout.order) : source.u16(start, layout.order);
    const std::uint64_t entrySize = layout.big ? 20 : 12;
    std::uint64_t entry = start + (layout.big ? 8 : 2);
    try {
        for (std::uint64_t i = 0; i < std::min(count, maximumEntries); ++i, entry += entrySize) {
            const unsigned tag = source.u16(entry, layout.order);
            const auto wanted = {254, 256, 257, 258, 262, 277, 330, 338};
            if (std::find(wanted.begin(), wanted.end(), static_cast<int>(tag)) == wanted.end()) continue;
            const std::vector<std::uint64_t> values = readValues(source, layout, entry);
            if (values.empty()) continue;
            if (tag == 254) directory.subfileType = values[0];
            if (tag == 256) directory.width = values[0];
            if (tag == 257) directory.height = values[0];
            if (tag == 258) directory.bits = values;
            if (tag == 262) directory.photometric = values[0];
            if (tag == 277) directory.samples = values[0];
            if (tag == 330) directory.subDirectories = values;
            if (tag == 338) directory.extraSamples = values;
        }
    } catch (const OutOfBytes&) {
        // A file cut short keeps what its directory still says.
    }
    return directory;
}

ColourModel modelOf(std::uint64_t photometric) {
    switch (photometric) {
        case 0:  // white is zero
        case 1:  // black is zero
        case 4:  // transparency mask
            return ColourModel::gray;
        case 5:
            return ColourModel::cmyk;
        case 8:
        case 9:
        case 10:
            return ColourModel::lab;
        default:  // RGB, palette, YCbCr, and what cameras store
            return ColourModel::rgb;
    }
}

}  // namespace

bool readTiffHeader(ByteSource& source, ImageHeader& header) {
    Layout layout;
    if (source.matches(0, "II")) {
        layout.order = ByteOrder::littleEndian;
    } else if (!source.matches(0, "MM")) {
        return false;
    }
    const unsigned version = source.u16(2, layout.order);
    if (version != 42 && version != 43) return false;
    layout.big = version == 43;

    Directory image = readDirectory(source, layout, readOffset(source, layout, layout.big ? 8 : 4));
    // Raw camera files put a preview first, and the picture itself into a subdirectory.
    if ((image.subfileType & 1) != 0) {
        for (const std::uint64_t start : image.subDirectories) {
            const Directory candidate = readDirectory(source, layout, start);
            if (candidate.subfileType != 0 || candidate.width == 0) continue;
            image = candidate;
            break;
        }
    }
    if (image.width == 0 || image.height == 0) return true;
    header.width = static_cast<std::uint32_t>(std::min<std::uint64_t>(image.width, UINT32_MAX));
    header.height = static_cast<std::uint32_t>(std::min<std::uint64_t>(image.height, UINT32_MAX));
    header.bitsPerChannel = image.bits.empty() ? 1U : static_cast<unsigned>(std::min<std::uint64_t>(image.bits[0], 64));
    header.channels = static_cast<unsigned>(std::min<std::uint64_t>(image.samples, 64));
    header.colour = modelOf(image.photometric);
    // 1 is premultiplied alpha, 2 is straight; 0 says nothing of its meaning.
    header.alpha = std::any_of(image.extraSamples.begin(), image.extraSamples.end(),
                               [](std::uint64_t meaning) { return meaning == 1 || meaning == 2; });
    return true;
}

}  // namespace marrowbeck::tools
