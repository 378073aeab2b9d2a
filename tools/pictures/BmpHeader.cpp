#include "tools/pictures/Formats.h"

namespace marrowbeck::tools {

namespace {

constexpr auto order = ByteOrder::littleEndian;

/// A negative height says that the rows stand from top to bottom.
std::uint32_t magnitude(std::uint32_t value) {
    return (value & 0x80000000U) != 0 ? 0U - value : value;
}

}  // namespace

bool readBmpHeader(ByteSource& source, ImageHeader& header) {
    if (!source.matches(0, "BM")) return false;
    constexpr std::uint32_t coreHeader = 12;
    constexpr std::uint32_t infoHeader = 40;
    constexpr std::uint32_t headerWithAlphaMask = 56;
    const std::uint32_t size = source.u32(14, order);
    unsigned bits = 0;
    if (size == coreHeader) {
        header.width = source.u16(18, order);
        header.height = source.u16(20, order);
        bits = source.u16(24, order);
    } else if (size >= infoHeader && size <= 1024) {
        header.width = magnitude(source.u32(18, order));
        header.height = magnitude(source.u32(22, order));
        bits = source.u16(28, order);
    } else {
        return false;
    }
    header.colour = ColourModel::rgb;
    header.alpha = bits == 32 && size >= headerWithAlphaMask && source.u32(66, order) != 0;
    if (bits == 16) {  // five bits a colour and one left over, or six for green
        header.bitsPerChannel = 5;
        header.channels = 3;
    } else if (bits > 8) {
        header.bitsPerChannel = 8;
        header.channels = bits / 8;
    } else {
        header.bitsPerChannel = bits;
        header.channels = 1;
    }
    return true;
}

}  // namespace marrowbeck::tools
