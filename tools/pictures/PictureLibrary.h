// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace marrowbeck::tools {

/// The bytes of a file, in memory or mapped. They belong to somebody else.
using Content = std::span<const std::uint8_t>;

enum class ColourModel { unknown, gray, rgb, cmyk, lab };

/// What an image file says of its own pixels and what it carries beside them. Members stay at their
/// defaults where the file does not say, or is damaged.
struct PictureHeader {
    std::uint32_t width = 0;      ///< pixels, before any orientation is applied
    std::uint32_t height = 0;     ///< pixels
    unsigned bitsPerChannel = 0;  ///< of a stored sample; of the index in a palette image
    unsigned channels = 0;        ///< stored samples a pixel, alpha included
    ColourModel colour = ColourModel::unknown;
    std::optional<bool> alpha;
    /// Whether the format itself says how the picture stands, so that width, height and the pixels that are
    /// read are turned already and what Exif says of it counts no more.
    bool upright = false;
    std::string profile;  ///< ICC profile (ISO 15076-1)
    std::string exif;     ///< Exif, from the TIFF header on
    std::string xmp;      ///< XMP packet
    /// Keyed texts such as those of PNG: key, UTF-8 text.
    std::vector<std::pair<std::string, std::string>> texts;
};

/// A picture as a screen wants it: upright, sRGB, 8 bits a channel, rows without gaps.
struct Pixels {
    int width = 0;  ///< 0 when there is no picture
    int height = 0;
    int channels = 0;   ///< 3, or 4 with alpha (not premultiplied) as the last
    std::string bytes;  ///< width * height * channels
};

/// The library that knows the formats of pictures. It is large and takes longer to load than a header takes to read:
/// so it is loaded at the first use, and a file that others can read never loads it.
/// For one thread of a reader; files are foreign bytes.
class PictureLibrary {
  public:
    virtual ~PictureLibrary() = default;

    /// What the file says of itself, told by its content alone; nothing is decoded. An empty header for what makes no
    /// sense or is of a format that may not be read.
    virtual PictureHeader header(Content content) = 0;

    /// The first picture of the file with at most `side` pixels (1 or more) on its longer side and never enlarged,
    /// turned as `orientation` says (Exif, 1 to 8) unless the format has done so itself. What is left of a picture that
    /// was cut short is shown. No picture when nothing can be decoded.
    virtual Pixels picture(Content content, int side, int orientation) = 0;

    /// Makes ready all formats, so that forks of this process need not. Starts no thread.
    virtual void warmUp() = 0;
};

/// The one library of the process, loaded now if it was not before. Null when it cannot be loaded.
PictureLibrary* pictureLibrary();

/// The folders in which the library and its data lie.
std::vector<std::string> pictureLibraryFolders();

/// What the file says of itself: a JPEG by a few bytes of our own reading, which loads no library, and everything else
/// by `PictureLibrary::header`.
PictureHeader readPictureHeader(Content content);

}  // namespace marrowbeck::tools
