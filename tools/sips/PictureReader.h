#pragma once

#include <QImage>
#include <string_view>

class QIODevice;

namespace marrowbeck::tools {

/// Bytes from the beginning of a file by which its decoder is found.
inline constexpr size_t decoderHeadBytes = 32;

/// Megabytes of the largest picture that is laid out in memory whole: 268 million
/// pixels of 8 bits a channel. A larger one is read only where its decoder scales while reading.
inline constexpr int mostDecodedMegabytes = 1024;

/// Name of the decoder for a picture that begins with `head`; null where there is
/// none. Asked by content, since names lie; and by ourselves, since Qt would load every
/// decoder there is, and with them some that draw text, run scripts or open other files.
const char* decoderFor(std::string_view head);

/// Reads the first picture of `device`, scaled down to at most `longestSide` pixels
/// (1 or more) on its longer side, upright, in sRGB with 8 bits a channel. Where the picture does
/// not say how it stands, `orientation` does, as in Exif (1 to 8). Null when it cannot
/// be decoded or would take too much memory. May be called on any one thread at a time.
QImage readPicture(QIODevice& device, const char* decoder, int longestSide, int orientation = 1);

/// Whether the picture is so large that `readPicture` needs hundreds of megabytes for
/// it, as its decoder cannot scale while reading. Reads the header alone.
bool isLaidOutWhole(QIODevice& device, const char* decoder);

/// Pixels on the longer side, as the header says; 0 when it does not make sense.
int longerSideOf(QIODevice& device, const char* decoder);

}  // namespace marrowbeck::tools
