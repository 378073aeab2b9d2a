#include "tools/pictures/Formats.h"

namespace marrowbeck::tools {

bool readWebpHeader(ByteSource& source, ImageHeader& header) {
    constexpr auto order = ByteOrder::littleEndian;
    constexpr std::uint32_t mask14 = 0x3fff;
    if (!source.matches(0, "RIFF") || !source.matches(8, "WEBP")) return false;
    header.bitsPerChannel = 8;
    header.colour = ColourModel::rgb;
    if (source.matches(12, "VP8X")) {
        header.alpha = (source.u8(20) & 0x10) != 0;
        header.width = source.u24(24, order) + 1;
        header.height = source.u24(27, order) + 1;
    } else if (source.matches(12, "VP8L") && source.u8(20) == 0x2f) {
        const std::uint32_t bits = source.u32(21, order);
        header.width = (bits & mask14) + 1;
        header.height = (bits >> 14 & mask14) + 1;
        header.alpha = (bits >> 28 & 1) != 0;
    } else if (source.matches(12, "VP8 ") && source.matches(23, "\x9d\x01\x2a")) {
        header.width = source.u16(26, order) & mask14;
        header.height = source.u16(28, order) & mask14;
        header.alpha = false;
    }
    header.channels = header.alpha.value_or(false) ? 4 : 3;
    return true;
}

}  // namespace marrowbeck::tools
