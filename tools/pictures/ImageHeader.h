#pragma once

#include <cstdint>
#include <optional>

#include "tools/pictures/ByteSource.h"

namespace marrowbeck::tools {

enum class ColourModel { unknown, gray, rgb, cmyk, lab };

/// What an image file says of its own pixels, before any orientation is applied.
/// Members stay at their defaults where the file does not say, or is damaged.
struct ImageHeader {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    unsigned bitsPerChannel = 0;  ///< of a stored sample; of the index in a palette image
    unsigned channels = 0;        ///< stored samples a pixel, alpha included
    ColourModel colour = ColourModel::unknown;
    std::optional<bool> alpha;
};

/// Reads the header of a JPEG, PNG, GIF, TIFF, BMP, WebP, JPEG 2000 or PSD image,
/// told by its content alone. Never throws on account of the file, and reads a
/// bounded number of bytes of it; another format gives an empty header.
ImageHeader readImageHeader(ByteSource& source);

}  // namespace marrowbeck::tools
