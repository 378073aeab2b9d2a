// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/pictures/QuickDraw.h"

// ImageMagick 6 (Debian 12) and 7 (Debian 13 and later): what is used here they have by the same names.
#if __has_include(<MagickCore/MagickCore.h>)
#include <MagickCore/MagickCore.h>
#else
#include <magick/MagickCore.h>
#endif

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <memory>

namespace marrowbeck::tools {

namespace {

using Complaints = std::unique_ptr<ExceptionInfo, decltype(&DestroyExceptionInfo)>;
using Order = std::unique_ptr<ImageInfo, decltype(&DestroyImageInfo)>;
using Painted = std::unique_ptr<Image, decltype(&DestroyImage)>;

Pixels pixelsOf(const Image& image, ExceptionInfo* complaints) {
    constexpr std::size_t most = std::numeric_limits<int>::max();
    if (image.columns == 0 || image.rows == 0 || image.columns > most || image.rows > most) return {};
    const bool hasAlpha = GetImageAlphaChannel(&image) != MagickFalse;
    Pixels pixels{static_cast<int>(image.columns), static_cast<int>(image.rows), hasAlpha ? 4 : 3, {}};
    pixels.bytes.resize(image.columns * image.rows * static_cast<std::size_t>(pixels.channels));
    const bool isWhole = ExportImagePixels(&image, 0, 0, image.columns, image.rows, hasAlpha ? "RGBA" : "RGB",
                                           CharPixel, pixels.bytes.data(), complaints) != MagickFalse;
    return isWhole ? pixels : Pixels();
}

std::string profileOf(const Image& image) {
    const StringInfo* const profile = GetImageProfile(&image, "icc");
    if (profile == nullptr) return {};
    return {reinterpret_cast<const char*>(GetStringInfoDatum(profile)), GetStringInfoLength(profile)};
}

}  // namespace

}  // namespace marrowbeck::tools

extern "C" void readQuickDraw(marrowbeck::tools::Content content, marrowbeck::tools::QuickDrawPicture& picture) {
    using namespace marrowbeck::tools;
    constexpr char format[] = "PICT";
    MagickCoreGenesis(nullptr, MagickFalse);  // once, however often it is asked for
    const Complaints complaints(AcquireExceptionInfo(), &DestroyExceptionInfo);
    GetMagickInfo(format, complaints.get());
    if (content.empty()) return;
    const Order order(AcquireImageInfo(), &DestroyImageInfo);
    std::copy(std::begin(format), std::end(format), order->magick);
    const Painted painted(BlobToImage(order.get(), content.data(), content.size(), complaints.get()), &DestroyImage);
    if (!painted) return;
    picture = {pixelsOf(*painted, complaints.get()), profileOf(*painted)};
}
