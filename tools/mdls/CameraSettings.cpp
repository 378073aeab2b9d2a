// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdls/CameraSettings.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>

#include "tools/mdls/EmbeddedTexts.h"

namespace marrowbeck::tools {

namespace {

using Keys = std::initializer_list<const char*>;

std::optional<double> numberOf(const Exiv2::ExifData& data, const char* key) {
    return guarded([&]() -> std::optional<double> {
        const auto found = data.findKey(Exiv2::ExifKey(key));
        if (found == data.end() || found->count() == 0) return std::nullopt;
        const bool ratio = found->typeId() == Exiv2::unsignedRational || found->typeId() == Exiv2::signedRational;
        if (!ratio) return static_cast<double>(found->toFloat(0));
        const Exiv2::Rational value = found->toRational(0);
        // The library holds unsigned numbers in signed ones.
        const bool isSigned = found->typeId() == Exiv2::signedRational;
        const auto part = [isSigned](int32_t number) {
            return isSigned ? static_cast<double>(number) : static_cast<double>(static_cast<uint32_t>(number));
        };
        return part(value.first) / part(value.second);
    });
}

/// The first of the tags that holds a number above zero: zero stands for unknown.
std::optional<double> firstNumber(const Exiv2::ExifData& data, Keys keys) {
    for (const char* const key : keys) {
        const std::optional<double> number = numberOf(data, key);
        if (number && std::isfinite(*number) && *number > 0) return number;
    }
    return std::nullopt;
}

/// The shortest decimal text that reads back as the same number.
std::string decimal(std::optional<double> number) {
    if (!number || !std::isfinite(*number) || *number <= 0) return {};
    char text[512];
    const auto end = std::to_chars(text, text + sizeof text, *number, std::chars_format::fixed);
    return {text, end.ptr};
}

std::string exposureTimeText(const Exiv2::ExifData& data) {
    std::optional<double> seconds = firstNumber(data, {"Exif.Photo.ExposureTime", "Exif.Image.ExposureTime"});
    if (!seconds) {
        // Shutter speed in the APEX system is a negative power of two, and zero is one second.
        const std::optional<double> apex = numberOf(data, "Exif.Photo.ShutterSpeedValue");
        if (apex && std::abs(*apex) < 32) seconds = std::exp2(-*apex);
    }
    return decimal(seconds);
}

std::string fNumberText(const Exiv2::ExifData& data) {
    std::optional<double> number = firstNumber(data, {"Exif.Photo.FNumber", "Exif.Image.FNumber"});
    if (!number) {
        const std::optional<double> apex = firstNumber(data, {"Exif.Photo.ApertureValue"});
        if (apex && *apex < 32) number = std::round(std::exp2(*apex / 2) * 10) / 10;
    }
    return decimal(number);
}

/// Of cameras that keep it in their own notes, each maker by a code of his own: what the library makes of that is text.
std::optional<double> notedSpeed(const Exiv2::ExifData& data) {
    return guarded([&]() -> std::optional<double> {
        const auto found = Exiv2::isoSpeed(data);
        if (found == data.end()) return std::nullopt;
        std::ostringstream text;
        found->write(text, &data);
        const std::string digits = text.str();
        unsigned speed = 0;
        const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), speed);
        return failure == std::errc() && speed > 0 ? std::optional<double>(speed) : std::nullopt;
    });
}

std::string isoSpeedText(const Exiv2::ExifData& data) {
    std::optional<double> speed = firstNumber(data, {"Exif.Photo.ISOSpeedRatings", "Exif.Image.ISOSpeedRatings"});
    // The old tag ends at 65535, and says so when the newer ones know more.
    if (!speed || *speed >= 65535) {
        const std::optional<double> newer = firstNumber(
            data,
            {"Exif.Photo.RecommendedExposureIndex", "Exif.Photo.ISOSpeed", "Exif.Photo.StandardOutputSensitivity"});
        if (newer) speed = newer;
    }
    if (!speed) speed = notedSpeed(data);
    return speed ? decimal(std::round(*speed)) : std::string();
}

/// "0230" is version 2.3, "0221" is 2.21, "0300" is 3.0.
std::string versionText(const Exiv2::ExifData& data) {
    return guarded([&] {
        const auto found = data.findKey(Exiv2::ExifKey("Exif.Photo.ExifVersion"));
        if (found == data.end() || found->size() != 4) return std::string();
        std::string digits(4, '\0');
        found->copy(reinterpret_cast<Exiv2::byte*>(digits.data()), Exiv2::littleEndian);
        if (digits.find_first_not_of("0123456789") != std::string::npos) return std::string();
        std::string text = digits[0] == '0' ? digits.substr(1, 1) : digits.substr(0, 2);
        text += "." + digits.substr(2);
        if (text.ends_with('0')) text.pop_back();
        return text;
    });
}

}  // namespace

CameraSettings cameraSettingsOf(const Exiv2::Image& image) {
    const Exiv2::ExifData& data = image.exifData();
    CameraSettings settings;
    settings.make = exifText(data, "Exif.Image.Make");
    settings.model = exifText(data, "Exif.Image.Model");
    settings.exposureTime = exposureTimeText(data);
    settings.fNumber = fNumberText(data);
    settings.focalLength = decimal(firstNumber(data, {"Exif.Photo.FocalLength", "Exif.Image.FocalLength"}));
    settings.isoSpeed = isoSpeedText(data);

    settings.exifVersion = versionText(data);
    const std::string* const noted[] = {&settings.make,    &settings.model,       &settings.exposureTime,
                                        &settings.fNumber, &settings.focalLength, &settings.isoSpeed};
    const bool camera =
        std::any_of(std::begin(noted), std::end(noted), [](const auto* text) { return !text->empty(); });
    // The version is how others learn that there is Exif data; some cameras and old raw formats leave it out.
    if (settings.exifVersion.empty() && camera) settings.exifVersion = "unknown";
    return settings;
}

}  // namespace marrowbeck::tools
