// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/framework.h"

namespace marrowbeck {

/// The pictures that the program brings. Each is loaded at its first use and kept to the end of the process; without a
/// resources folder it is Nil, and is looked for again at the next use.
namespace Pictures {

/// The icon of the tool that shows a file in the file manager.
Ref<Picture> find();
/// The icon of the tool that chooses a folder.
Ref<Picture> folder();
/// The icon of the tool that opens an image.
Ref<Picture> image_alt();
/// The icon of the tool that searches again.
Ref<Picture> reload();
/// The icon of the tool that stops a search.
Ref<Picture> stop();
/// The program's emblem in the about window.
Ref<Picture> Marrowbeck_small();
/// What stands in the preview as long as there is none.
Ref<Picture> zn240();

}  // namespace Pictures
}  // namespace marrowbeck
