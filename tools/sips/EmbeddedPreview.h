#pragma once

#include <string>

namespace marrowbeck::tools {

/// A small picture that a camera has laid beside the real one, mostly a JPEG.
struct EmbeddedPreview {
    std::string content;  ///< a picture file of its own; empty where there is none
    int longerSide = 0;   ///< of the preview, in pixels
};

/// What the metadata of a file says of its picture and of smaller ones.
struct EmbeddedPictures {
    int longerSide = 0;   ///< of the real picture, in pixels; 0 when unknown
    int orientation = 1;  ///< of the real picture and of the smaller ones, as in Exif
    EmbeddedPreview preview;
};

/// Finds the smallest preview with at least `side` pixels on its longer side, else
/// the largest. `absolutePath` as for `openExiv2Image`, and so are the rules of calling.
EmbeddedPictures embeddedPictures(const std::string& absolutePath, int side);

}  // namespace marrowbeck::tools
