// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The thread of the search.
class SizeThread : public Thread {};

/// The thread of the preview.
class PicturescaleThread : public Thread {};

}  // namespace marrowbeck
