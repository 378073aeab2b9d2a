#pragma once

#include <QImage>
#include <string>

namespace marrowbeck::tools {

/// The bytes of a PNG of `image`, which holds sRGB; with an alpha channel where the image
/// has one. Empty when that fails. Qt's own writer would load every decoder first, to
/// ask each whether it writes PNG, and that takes longer than the rest of a small preview.
std::string sipsPng(const QImage& image);

}  // namespace marrowbeck::tools
