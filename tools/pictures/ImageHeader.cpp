#include "tools/pictures/ImageHeader.h"

#include "tools/pictures/Formats.h"

namespace marrowbeck::tools {

ImageHeader readImageHeader(ByteSource& source) {
    constexpr bool (*readers[])(ByteSource&, ImageHeader&) = {
        readJpegHeader, readPngHeader,  readTiffHeader,     readGifHeader,
        readBmpHeader,  readWebpHeader, readJpeg2000Header, readPsdHeader,
    };
    ImageHeader header;
    try {
        for (const auto read : readers) {
            if (read(source, header)) break;
        }
    } catch (const OutOfBytes&) {
        // What was found before the file ended is still true.
    }
    return header;
}

}  // namespace marrowbeck::tools
