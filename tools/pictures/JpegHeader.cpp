#include "tools/pictures/Formats.h"

namespace marrowbeck::tools {

namespace {

constexpr auto order = ByteOrder::bigEndian;

// A picture has some dozens of segments; a profile or an extended XMP packet, some hundreds.
constexpr int maximumSegments = 8192;

constexpr unsigned startOfScan = 0xda;
constexpr unsigned endOfImage = 0xd9;

bool isStartOfFrame(unsigned marker) {
    return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

bool standsAlone(unsigned marker) {
    return marker == 0x01 || (marker >= 0xd0 && marker <= 0xd8);
}

}  // namespace

bool readJpegHeader(ByteSource& source, ImageHeader& header) {
    if (!source.matches(0, "\xff\xd8\xff")) return false;
    header.alpha = false;
    std::uint64_t position = 2;
    for (int step = 0; step < maximumSegments; ++step) {
        // A byte that is no marker, or one more of the fill bytes before it, is passed over.
        if (source.u8(position) != 0xff || source.u8(position + 1) == 0xff) {
            ++position;
            continue;
        }
        const unsigned marker = source.u8(position + 1);
        if (marker == startOfScan || marker == endOfImage) break;
        if (isStartOfFrame(marker)) {
            header.bitsPerChannel = source.u8(position + 4);
            header.height = source.u16(position + 5, order);
            header.width = source.u16(position + 7, order);
            header.channels = source.u8(position + 9);
            header.colour = header.channels == 1   ? ColourModel::gray
                            : header.channels == 4 ? ColourModel::cmyk
                                                   : ColourModel::rgb;
            break;
        }
        position += 2;
        if (!standsAlone(marker)) position += source.u16(position, order);
    }
    return true;
}

}  // namespace marrowbeck::tools
