#include "tools/pictures/Formats.h"

namespace marrowbeck::tools {

bool readPsdHeader(ByteSource& source, ImageHeader& header) {
    constexpr auto order = ByteOrder::bigEndian;
    if (!source.matches(0, "8BPS")) return false;
    header.channels = source.u16(12, order);
    header.height = source.u32(14, order);
    header.width = source.u32(18, order);
    header.bitsPerChannel = source.u16(22, order);
    unsigned colours = 0;
    switch (source.u16(24, order)) {
        case 0:  // bitmap
        case 1:  // gray
        case 8:  // duotone, stored as gray
            header.colour = ColourModel::gray;
            colours = 1;
            break;
        case 2:  // palette
            header.colour = ColourModel::rgb;
            colours = 1;
            break;
        case 3:
            header.colour = ColourModel::rgb;
            colours = 3;
            break;
        case 4:
            header.colour = ColourModel::cmyk;
            colours = 4;
            break;
        case 9:
            header.colour = ColourModel::lab;
            colours = 3;
            break;
        default:  // several inks of any kind
            return true;
    }
    header.alpha = header.channels > colours;
    return true;
}

}  // namespace marrowbeck::tools
