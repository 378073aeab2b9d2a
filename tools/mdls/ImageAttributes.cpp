// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdls/ImageAttributes.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "base/Utf8.h"
#include "tools/mdls/CameraSettings.h"
#include "tools/mdls/ColourProfile.h"
#include "tools/mdls/EmbeddedTexts.h"
#include "tools/pictures/Exiv2Image.h"
#include "tools/pictures/TextEncoding.h"

namespace marrowbeck::tools {

namespace {

/// Whole channels count as four, as in a pixel of memory: 32 is 8 bits a channel, and 64
/// is 16. Other depths are the bits that the file keeps for a pixel.
std::string bitsPerSample(const PictureHeader& header) {
    if (header.bitsPerChannel == 0) return {};
    const bool whole = header.bitsPerChannel == 8 || header.bitsPerChannel >= 16;
    return std::to_string(header.bitsPerChannel * (whole ? 4 : header.channels));
}

std::string colourName(ColourModel model) {
    switch (model) {
        case ColourModel::gray:
            return "Gray";
        case ColourModel::rgb:
            return "RGB";
        case ColourModel::cmyk:
            return "CMYK";
        case ColourModel::lab:
            return "Lab";
        case ColourModel::unknown:
            break;
    }
    return {};
}

/// A list has an element a line, between brackets on lines of their own.
std::string listText(const std::vector<std::string>& elements) {
    constexpr std::string_view end = "\n)";
    if (elements.empty()) return {};
    std::string text = "(";
    std::string_view separator = "\n    ";
    for (const std::string& element : elements) {
        if (text.size() + separator.size() + element.size() + end.size() > longestValue) break;
        text.append(separator).append(element);
        separator = ",\n    ";
    }
    return text.append(end);
}

ColourProfile embeddedProfile(Exiv2::Image* image, const PictureHeader& header) {
    const Content own = image == nullptr ? Content() : exiv2::profileOf(*image);
    if (!own.empty()) return describeProfile(own);
    return describeProfile({reinterpret_cast<const std::uint8_t*>(header.profile.data()), header.profile.size()});
}

/// Of pictures with few bits a sample the library tells what it makes of them.
void correctDepth(PictureHeader& header, const Exiv2::Image& image) {
    if (image.mimeType() != "image/tiff") return;
    const std::int64_t bits = guarded([&] {
        const auto found = image.exifData().findKey(Exiv2::ExifKey("Exif.Image.BitsPerSample"));
        return found == image.exifData().end() || found->count() == 0 ? 0 : exiv2::numberOf(*found);
    });
    if (bits > 0 && bits < 8) header.bitsPerChannel = static_cast<unsigned>(bits);
}

}  // namespace

AttributeMap readImageAttributes(Content content) {
    AttributeMap attributes;
    const auto set = [&attributes](const char* name, const std::string& value) {
        std::string text = tidied(value);
        text.resize(base::wholeCharacters(text, longestValue).size());
        if (!text.empty()) attributes[name] = std::move(text);
    };

    PictureHeader header = readPictureHeader(content);
    const std::unique_ptr<Exiv2::Image> image = openExiv2Image(content, header);
    if (image) {
        const CameraSettings camera = cameraSettingsOf(*image);
        set("kMDItemEXIFVersion", camera.exifVersion);
        set("kMDItemAcquisitionMake", camera.make);
        set("kMDItemAcquisitionModel", camera.model);
        set("kMDItemExposureTimeSeconds", camera.exposureTime);
        set("kMDItemFNumber", camera.fNumber);
        set("kMDItemFocalLength", camera.focalLength);
        set("kMDItemISOSpeed", camera.isoSpeed);
        set("kMDItemDescription", captionOf(*image));
        set("kMDItemCopyright", copyrightOf(*image));
        set("kMDItemKeywords", listText(keywordsOf(*image)));
        correctDepth(header, *image);
    }
    // What only the format's own texts say.
    const auto text = [&](const char* key) {
        const auto found =
            std::find_if(header.texts.begin(), header.texts.end(), [key](const auto& one) { return one.first == key; });
        return found == header.texts.end() ? std::string() : guessedToUtf8(found->second);
    };
    const auto setIfMissing = [&](const char* name, const char* key) {
        if (!attributes.contains(name)) set(name, text(key));
    };
    setIfMissing("kMDItemDescription", "Description");
    setIfMissing("kMDItemDescription", "Comment");
    setIfMissing("kMDItemCopyright", "Copyright");

    const ColourProfile profile = embeddedProfile(image.get(), header);
    set("kMDItemProfileName", profile.name);
    if (header.colour == ColourModel::unknown) header.colour = profile.colour;

    PictureSize size = sizeOf(image.get(), header, content);
    if (orientationOf(image.get(), header) >= 5) std::swap(size.width, size.height);
    if (size.width != 0 && size.height != 0) {
        set("kMDItemPixelWidth", std::to_string(size.width));
        set("kMDItemPixelHeight", std::to_string(size.height));
    }
    set("kMDItemBitsPerSample", bitsPerSample(header));
    set("kMDItemColorSpace", colourName(header.colour));
    if (header.alpha) set("kMDItemHasAlphaChannel", *header.alpha ? "1" : "0");
    return attributes;
}

}  // namespace marrowbeck::tools
