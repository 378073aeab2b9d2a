// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdls/ColourProfile.h"

#include <lcms2.h>

#include <QString>
#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>

#include "tools/pictures/TextEncoding.h"

namespace marrowbeck::tools {

namespace {

// A description is a line of text; a longer one is no description.
constexpr cmsUInt32Number maximumNameBytes = 64 * 1024;

/// The library widens the bytes of older profiles, which should be ASCII, without a look at them: those beyond come out
/// negative, and are then bytes of whatever encoding their maker had in mind.
std::string textOf(const std::wstring& name) {
    const auto isByte = [](wchar_t unit) { return unit < 0; };
    if (std::any_of(name.begin(), name.end(), isByte)) {
        std::string bytes(name.size(), '\0');
        std::transform(name.begin(), name.end(), bytes.begin(), [](wchar_t unit) { return static_cast<char>(unit); });
        return guessedToUtf8(bytes);
    }
    QString text;
    for (const wchar_t unit : name) {
        const auto point = static_cast<char32_t>(unit);
        const bool valid = point <= QChar::LastValidCodePoint && !QChar::isSurrogate(point);
        text += valid ? QString::fromUcs4(&point, 1) : QString(QChar(QChar::ReplacementCharacter));
    }
    return text.toStdString();
}

std::string nameOf(cmsHPROFILE profile) {
    const cmsUInt32Number bytes = cmsGetProfileInfo(profile, cmsInfoDescription, "en", "US", nullptr, 0);
    if (bytes == 0 || bytes > maximumNameBytes) return {};
    std::wstring name(bytes / sizeof(wchar_t) + 1, L'\0');
    const auto room = static_cast<cmsUInt32Number>(name.size() * sizeof(wchar_t));
    cmsGetProfileInfo(profile, cmsInfoDescription, "en", "US", name.data(), room);
    name.resize(std::min(name.find(L'\0'), name.size()));
    return tidied(textOf(name));
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
