#include "tools/mdls/ImageAttributes.h"

#include <algorithm>
#include <utility>

#include "tools/mdls/CameraSettings.h"
#include "tools/mdls/ColourProfile.h"
#include "tools/mdls/EmbeddedTexts.h"
#include "tools/service/LostPages.h"
#include "tools/mime/MimeDatabase.h"
#include "tools/pictures/TextEncoding.h"
#include "tools/pictures/ImageHeader.h"

namespace marrowbeck::tools {

namespace {

/// Whole channels count as four, as in a pixel of memory: 32 is 8 bits a channel, and 64
/// is 16. Other depths are the bits that the file keeps for a pixel.
std::string bitsPerSample(const ImageHeader& header) {
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
    if (elements.empty()) return {};
    std::string text = "(";
    const char* separator = "\n    ";
    for (const std::string& element : elements) {
        text += separator + element;
        separator = ",\n    ";
    }
    return text + "\n)";
}

ColourProfile embeddedProfile(Exiv2::Image& image) {
    if (!image.iccProfileDefined()) return {};
    const Exiv2::DataBuf& icc = *image.iccProfile();
    if (icc.pData_ == nullptr || icc.size_ <= 0) return {};
    return describeProfile({icc.pData_, static_cast<size_t>(icc.size_)});
}

}  // namespace

AttributeMap readImageAttributes(const InputFile& file) {
    AttributeMap attributes;
    const auto set = [&attributes](const char* name, const std::string& value) {
        if (!value.empty()) attributes[name] = value;
    };

    ByteSource source(file.descriptor());
    ImageHeader header = readImageHeader(source);

    const LostPagesReadAsZeros guard;
    CameraSettings camera;
    if (const auto image = openExiv2Image(file.plainPath())) {
        camera = cameraSettingsOf(*image);
        set("kMDItemDescription", captionOf(*image));
        set("kMDItemCopyright", copyrightOf(*image));
        set("kMDItemKeywords", listText(keywordsOf(*image)));
        const ColourProfile profile = embeddedProfile(*image);
        set("kMDItemProfileName", profile.name);

        // Formats whose headers we do not read.
        if (header.colour == ColourModel::unknown) header.colour = profile.colour;
        if (header.width == 0 || header.height == 0) {
            header.width = static_cast<std::uint32_t>(std::max(image->pixelWidth(), 0));
            header.height = static_cast<std::uint32_t>(std::max(image->pixelHeight(), 0));
        }
    }
    set("kMDItemEXIFVersion", camera.exifVersion);
    set("kMDItemAcquisitionMake", camera.make);
    set("kMDItemAcquisitionModel", camera.model);
    set("kMDItemExposureTimeSeconds", camera.exposureTime);
    set("kMDItemFNumber", camera.fNumber);
    set("kMDItemFocalLength", camera.focalLength);
    set("kMDItemISOSpeed", camera.isoSpeed);

    if (camera.standsOnItsSide) std::swap(header.width, header.height);
    if (header.width != 0 && header.height != 0) {
        set("kMDItemPixelWidth", std::to_string(header.width));
        set("kMDItemPixelHeight", std::to_string(header.height));
    }
    set("kMDItemBitsPerSample", bitsPerSample(header));
    set("kMDItemColorSpace", colourName(header.colour));
    if (header.alpha) set("kMDItemHasAlphaChannel", *header.alpha ? "1" : "0");
    return attributes;
}

std::string readKind(const InputFile& file) {
    const MimeDatabase database;
    const std::string_view type = database.typeByContent(file.name(), file.head(MimeDatabase::contentBytes));
    return type.empty() ? std::string() : tidied(database.comment(type));
}

}  // namespace marrowbeck::tools
