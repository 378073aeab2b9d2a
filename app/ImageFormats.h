// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The image types that the walk of a folder knows.
namespace ImageFormats {

/// Makes the records and registers them; once, at start-up.
void _Initialize();

Ref<FileType> pImageGif();
Ref<FileType> pImageJpeg();
Ref<FileType> pImagePict();
Ref<FileType> pImagePng();
Ref<FileType> pImageTiff();
Ref<FileType> pImageJpeg2000();

/// The names of the six types, each followed by a semicolon.
String All();

}  // namespace ImageFormats
}  // namespace marrowbeck
