// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "tools/pictures/Exiv2Image.h"

namespace marrowbeck::tools {

/// What the camera has noted, each as text; empty for what it has not, or for a
/// number that makes no sense (a division by zero, or nothing at all).
struct CameraSettings {
    std::string exifVersion;   ///< such as "2.3"
    std::string make;          ///< maker of the camera
    std::string model;         ///< its model
    std::string exposureTime;  ///< seconds, decimal
    std::string fNumber;       ///< decimal
    std::string focalLength;   ///< millimetres, decimal
    std::string isoSpeed;      ///< whole number
};

CameraSettings cameraSettingsOf(const Exiv2::Image& image);

}  // namespace marrowbeck::tools
