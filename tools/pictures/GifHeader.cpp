#include "tools/pictures/Formats.h"

namespace marrowbeck::tools {

namespace {

constexpr auto order = ByteOrder::littleEndian;
constexpr int maximumBlocks = 8192;

}  // namespace

bool readGifHeader(ByteSource& source, ImageHeader& header) {
    if (!source.matches(0, "GIF87a") && !source.matches(0, "GIF89a")) return false;
    header.width = source.u16(6, order);
    header.height = source.u16(8, order);
    header.bitsPerChannel = 8;  // of a palette entry: the width of the index changes from frame to frame
    header.channels = 1;
    header.colour = ColourModel::rgb;
    header.alpha = false;

    // Transparency stands in an extension block before the first frame.
    const unsigned screen = source.u8(10);
    std::uint64_t position = 13;
    if ((screen & 0x80) != 0) position += std::uint64_t{3} << ((screen & 7) + 1);
    bool insideExtension = false;
    for (int block = 0; block < maximumBlocks; ++block) {
        if (insideExtension) {
            const unsigned length = source.u8(position);
            position += 1 + length;
            insideExtension = length != 0;
            continue;
        }
        if (source.u8(position) != 0x21) break;  // no extension: the first frame, or the end
        if (source.u8(position + 1) == 0xf9 && (source.u8(position + 3) & 1) != 0) header.alpha = true;
        position += 2;
        insideExtension = true;
    }
    return true;
}

}  // namespace marrowbeck::tools
