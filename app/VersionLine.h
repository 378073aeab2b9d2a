// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// "Marrowbeck Version " and the three parts of the version.
String VersionLine();

}  // namespace marrowbeck
