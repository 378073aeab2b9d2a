// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/pictures/JpegHeader.h"

#include <cstddef>

namespace marrowbeck::tools {

namespace {

// A picture has some dozens of segments; a profile or an extended XMP packet, some hundreds.
constexpr int mostSegments = 8192;

constexpr unsigned startOfScan = 0xda;
constexpr unsigned endOfImage = 0xd9;

bool isStartOfFrame(unsigned marker) {
    return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

bool standsAlone(unsigned marker) {
    return marker == 0x01 || (marker >= 0xd0 && marker <= 0xd8);
}

}  // namespace

bool isJpeg(Content content) {
    return content.size() >= 3 && content[0] == 0xff && content[1] == 0xd8 && content[2] == 0xff;
}

PictureHeader readJpegHeader(Content content) {
    PictureHeader header;
    header.alpha = false;
    const auto number = [&](std::size_t at) { return static_cast<unsigned>(content[at] << 8 | content[at + 1]); };
    std::size_t position = 2;
    // What a frame's beginning takes, and any other segment's.
    for (int step = 0; step < mostSegments && position + 10 <= content.size(); ++step) {
        // A byte that is no marker, or one more of the fill bytes before it, is passed over.
        if (content[position] != 0xff || content[position + 1] == 0xff) {
            ++position;
            continue;
        }
        const unsigned marker = content[position + 1];
        if (marker == startOfScan || marker == endOfImage) break;
        if (isStartOfFrame(marker)) {
            header.bitsPerChannel = content[position + 4];
            header.height = number(position + 5);
            header.width = number(position + 7);
            header.channels = content[position + 9];
            header.colour = header.channels == 1   ? ColourModel::gray
                            : header.channels == 4 ? ColourModel::cmyk
                                                   : ColourModel::rgb;
            break;
        }
        position += 2;
        if (!standsAlone(marker)) position += number(position);
    }
    return header;
}

PictureHeader readPictureHeader(Content content) {
    if (isJpeg(content)) return readJpegHeader(content);
    PictureLibrary* const library = content.empty() ? nullptr : pictureLibrary();
    return library == nullptr ? PictureHeader() : library->header(content);
}

}  // namespace marrowbeck::tools
