// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The image types that the walk of a folder knows.
namespace ImageFormats {

/// Makes the records and registers them; once, at start-up. Until then they are Nil.
void _Initialize();

inline Ref<FileType> pImageGif;
inline Ref<FileType> pImageJpeg;
inline Ref<FileType> pImagePict;
inline Ref<FileType> pImagePng;
inline Ref<FileType> pImageTiff;
inline Ref<FileType> pImageJpeg2000;

/// The names of the six types, each followed by a semicolon.
String All();

}  // namespace ImageFormats
}  // namespace marrowbeck
