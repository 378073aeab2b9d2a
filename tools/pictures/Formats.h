#pragma once

#include "tools/pictures/ByteSource.h"
#include "tools/pictures/ImageHeader.h"

namespace marrowbeck::tools {

/// A function for each format: returns false when the content is of another one,
/// else fills in what it finds, in the order in which it finds it. Throws
/// `OutOfBytes` where the file ends too early; what was found by then stays.
bool readJpegHeader(ByteSource& source, ImageHeader& header);      ///< ISO/IEC 10918-1
bool readPngHeader(ByteSource& source, ImageHeader& header);       ///< W3C PNG, third edition
bool readGifHeader(ByteSource& source, ImageHeader& header);       ///< GIF87a and GIF89a
bool readTiffHeader(ByteSource& source, ImageHeader& header);      ///< TIFF 6.0, DNG's use of it, BigTIFF
bool readBmpHeader(ByteSource& source, ImageHeader& header);       ///< BITMAPCOREHEADER to BITMAPV5HEADER
bool readWebpHeader(ByteSource& source, ImageHeader& header);      ///< RFC 9649
bool readJpeg2000Header(ByteSource& source, ImageHeader& header);  ///< ISO/IEC 15444-1, boxed and bare
bool readPsdHeader(ByteSource& source, ImageHeader& header);       ///< PSD and PSB

}  // namespace marrowbeck::tools
