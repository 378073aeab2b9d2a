#include <algorithm>

#include "tools/pictures/Formats.h"

namespace marrowbeck::tools {

namespace {

constexpr auto order = ByteOrder::bigEndian;
constexpr int maximumBoxes = 1024;

ColourModel modelOfChannels(unsigned colours) {
    return colours <= 2 ? ColourModel::gray : colours == 4 ? ColourModel::cmyk : ColourModel::rgb;
}

ColourModel enumeratedModel(std::uint32_t value) {
    switch (value) {
        case 12:
            return ColourModel::cmyk;
        case 14:
            return ColourModel::lab;
        case 16:  // sRGB
        case 18:  // sYCC
            return ColourModel::rgb;
        case 17:
            return ColourModel::gray;
        default:
            return ColourModel::unknown;
    }
}

/// The SIZ segment, which opens every codestream.
void readCodestream(ByteSource& source, std::uint64_t start, ImageHeader& header) {
    header.width = source.u32(start + 8, order) - source.u32(start + 16, order);
    header.height = source.u32(start + 12, order) - source.u32(start + 20, order);
    header.channels = source.u16(start + 40, order);
    header.bitsPerChannel = (source.u8(start + 42) & 0x7fU) + 1;
    header.colour = modelOfChannels(header.channels);
}

void readChannelDefinitions(ByteSource& source, std::uint64_t content, ImageHeader& header) {
    const unsigned count = std::min<unsigned>(source.u16(content, order), 64);
    for (unsigned i = 0; i < count; ++i) {
        const unsigned type = source.u16(content + 2 + std::uint64_t{6} * i + 2, order);
        if (type == 1 || type == 2) header.alpha = true;  // straight or premultiplied
    }
}

}  // namespace

bool readJpeg2000Header(ByteSource& source, ImageHeader& header) {
    if (source.matches(0, std::string_view("\xff\x4f\xff\x51", 4))) {
        header.alpha = false;
        readCodestream(source, 0, header);
        return true;
    }
    if (!source.matches(0, std::string_view("\0\0\0\x0cjP  \r\n\x87\n", 12))) return false;
    header.alpha = false;
    ColourModel named = ColourModel::unknown;
    std::uint64_t position = 0;
    for (int box = 0; box < maximumBoxes && position + 8 <= source.size(); ++box) {
        std::uint64_t length = source.u32(position, order);
        std::uint64_t content = position + 8;
        if (source.matches(position + 4, "jp2h")) {
            position = content;  // its boxes follow
            continue;
        }
        if (length == 1) {
            length = source.u64(content, order);
            content += 8;
        }
        if (source.matches(position + 4, "ihdr")) {
            header.height = source.u32(content, order);
            header.width = source.u32(content + 4, order);
            header.channels = source.u16(content + 8, order);
            const unsigned bits = source.u8(content + 10);
            if (bits != 0xff) header.bitsPerChannel = (bits & 0x7f) + 1;  // 255: they differ, see the bpcc box
        } else if (source.matches(position + 4, "bpcc")) {
            header.bitsPerChannel = (source.u8(content) & 0x7fU) + 1;
        } else if (source.matches(position + 4, "colr") && source.u8(content) == 1) {
            named = enumeratedModel(source.u32(content + 3, order));
        } else if (source.matches(position + 4, "cdef")) {
            readChannelDefinitions(source, content, header);
        } else if (source.matches(position + 4, "jp2c")) {
            break;
        }
        if (length < 8 || length > source.size()) break;
        position += length;
    }
    const unsigned colours = header.channels - (*header.alpha && header.channels > 0 ? 1U : 0U);
    header.colour = named == ColourModel::unknown ? modelOfChannels(colours) : named;
    return true;
}

}  // namespace marrowbeck::tools
