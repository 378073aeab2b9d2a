#include "tools/pictures/Formats.h"

namespace marrowbeck::tools {

namespace {

constexpr auto order = ByteOrder::bigEndian;
constexpr int maximumChunks = 4096;

}  // namespace

bool readPngHeader(ByteSource& source, ImageHeader& header) {
    if (!source.matches(0, "\x89PNG\r\n\x1a\n") || !source.matches(12, "IHDR")) return false;
    header.width = source.u32(16, order);
    header.height = source.u32(20, order);
    header.bitsPerChannel = source.u8(24);
    const unsigned type = source.u8(25);  // bit 0: palette, bit 1: colour, bit 2: alpha
    const bool colour = (type & 2) != 0;
    const bool palette = (type & 1) != 0;
    const bool alpha = (type & 4) != 0;
    header.channels = (colour && !palette ? 3U : 1U) + (alpha ? 1U : 0U);
    header.colour = colour ? ColourModel::rgb : ColourModel::gray;
    header.alpha = alpha;

    // Images without an alpha channel can name transparent colours, in a chunk before the pixels.
    std::uint64_t position = 8;
    for (int chunk = 0; chunk < maximumChunks && !*header.alpha; ++chunk) {
        if (source.matches(position + 4, "IDAT") || source.matches(position + 4, "IEND")) break;
        if (source.matches(position + 4, "tRNS")) header.alpha = true;
        position += std::uint64_t{12} + source.u32(position, order);
    }
    return true;
}

}  // namespace marrowbeck::tools
