#include "tools/mdls/ColourProfile.h"

#include <lcms2.h>

#include <QString>
#include <memory>
#include <type_traits>

#include "tools/pictures/TextEncoding.h"

namespace marrowbeck::tools {

namespace {

// A description is a line of text; a longer one is no description.
constexpr cmsUInt32Number maximumNameBytes = 64 * 1024;

std::string nameOf(cmsHPROFILE profile) {
    const cmsUInt32Number bytes = cmsGetProfileInfo(profile, cmsInfoDescription, "en", "US", nullptr, 0);
    if (bytes == 0 || bytes > maximumNameBytes) return {};
    std::wstring name(bytes / sizeof(wchar_t) + 1, L'\0');
    const auto room = static_cast<cmsUInt32Number>(name.size() * sizeof(wchar_t));
    cmsGetProfileInfo(profile, cmsInfoDescription, "en", "US", name.data(), room);
    name.resize(name.find(L'\0') == std::wstring::npos ? name.size() : name.find(L'\0'));
    // Halves of characters that stand alone become the sign for what cannot be read.
    return tidied(QString::fromWCharArray(name.data(), static_cast<qsizetype>(name.size())).toStdString());
}

ColourModel modelOf(cmsColorSpaceSignature signature) {
    switch (signature) {
        case cmsSigRgbData:
            return ColourModel::rgb;
        case cmsSigGrayData:
            return ColourModel::gray;
        case cmsSigCmykData:
            return ColourModel::cmyk;
        case cmsSigLabData:
            return ColourModel::lab;
        default:
            return ColourModel::unknown;
    }
}

}  // namespace

ColourProfile describeProfile(std::span<const std::uint8_t> icc) {
    if (icc.empty() || icc.size() > UINT32_MAX) return {};
    const std::unique_ptr<std::remove_pointer_t<cmsHPROFILE>, cmsBool (*)(cmsHPROFILE)> profile(
        cmsOpenProfileFromMem(icc.data(), static_cast<cmsUInt32Number>(icc.size())), cmsCloseProfile);
    if (profile == nullptr) return {};
    return {nameOf(profile.get()), modelOf(cmsGetColorSpace(profile.get()))};
}

}  // namespace marrowbeck::tools
