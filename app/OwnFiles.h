// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// What the names of the preference file and of what is written for it begin with.
inline constexpr const char* kPreferencesName = "com.kv2tqq.marrowbeck.preferences";
/// The longer side that a thumbnail has at most, in pixels.
inline constexpr int kThumbnailSide = 240;

/// Whether the name is one that the program, or a tool of it, gives to a file which is on its way to another name.
bool IsHalfMadeName(const String& name);

/// Whether `file` is a thumbnail, or something that was written on the way to a file, and was made by this program. Its
/// name tells that; of a thumbnail, since photographs are called by numbers too, also that it is a PNG of a thumbnail's
/// size. False for what cannot be read.
bool IsOwnFile(const Ref<FolderItem>& file);

}  // namespace marrowbeck
