// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The types that are no image types: what may be dropped, and folders.
namespace FileTypes1 {

/// Makes the records and registers them; once, at start-up. Until then they are Nil.
void _Initialize();

inline Ref<FileType> pAny;
inline Ref<FileType> pSpecialFolder;

}  // namespace FileTypes1
}  // namespace marrowbeck
