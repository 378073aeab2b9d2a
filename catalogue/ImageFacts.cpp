// SPDX-License-Identifier: GPL-2.0-or-later
#include "catalogue/ImageFacts.h"

namespace marrowbeck {
namespace {

/// Fields of the answer on camera data, in the order of the attributes' names.
enum CameraField : int { kMaker = 0, kModel = 1, kExposureTime = 2, kFNumber = 3, kFocalLength = 4, kIsoSpeed = 5 };

constexpr double kMegabyte = 1024.0 * 1024.0;

/// A fraction of a second as photographers write it.
String exposureText(const String& seconds) {
    if (seconds.IsEmpty()) return {};
    const double time = Val(seconds);
    return time < 0.1 ? "1/" + Format(1.0 / time, "####") + "s" : Format(time, "###.0") + "s";
}

}  // namespace

String ImageFacts::WithoutNull(const String& value) {
    return Replace(value, "(null)", "");
}

String ImageFacts::DepthLabel(const String& bitsPerSample) {
    if (bitsPerSample == "32") return "8 bit";
    if (bitsPerSample == "64") return "16 bit";
    return {};
}

String ImageFacts::CleanKeywords(const String& list) {
    String keywords = WithoutNull(list);
    for (const String& removed : {String("("), String(")"), String("  "), Chr(13), Chr(10)}) {
        keywords = ReplaceAll(keywords, removed, "");
    }
    return keywords;
}

String ImageFacts::Orientation(std::int32_t width, std::int32_t height) {
    if (height < width) return "Landscape";
    return width < height ? "Portrait" : "Square";
}

double ImageFacts::UncompressedSize(std::int32_t width, std::int32_t height, bool sixteenBit) {
    const std::uint32_t bytes = static_cast<std::uint32_t>(width) * static_cast<std::uint32_t>(height) * 3U;
    const double size = static_cast<double>(static_cast<std::int32_t>(bytes)) / kMegabyte;
    return sixteenBit ? size * 2.0 : size;
}

String ImageFacts::CameraText(const Array<String>& fields) {
    const String maker = WithoutNull(fields(kMaker));
    const String model = WithoutNull(fields(kModel));
    const String exposure = exposureText(WithoutNull(fields(kExposureTime)));
    const String aperture = WithoutNull(fields(kFNumber));
    const String focalLength = WithoutNull(fields(kFocalLength));
    const String iso = WithoutNull(fields(kIsoSpeed));
    const String isoText = iso.IsEmpty() ? iso : "ISO" + iso;
    const String apertureText = aperture.IsEmpty() ? aperture : "F" + Format(Val(aperture), "##.0");
    const String focalText = focalLength.IsEmpty() ? focalLength : Format(Val(focalLength), "####.0") + "mm";
    const String line = Chr(10);
    return maker + " " + model + line + isoText + line + apertureText + line + exposure + line + focalText;
}

}  // namespace marrowbeck
